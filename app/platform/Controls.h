/// The things a person sees, as plain objects: status item, menu, menu items,
/// labels and a button. The shell sets them, a face observes and draws them.
///
/// Each tells one observer of a change. A face that draws may gather changes
/// until the shell has returned to the main loop; the shell often clears a value
/// before it sets the next.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/Image.h"

namespace dinmala {

/// Tells its observer after every change.
class Observable {
public:
    void setObserver(std::function<void()> observer) { observer_ = std::move(observer); }

protected:
    void changed() const {
        if (observer_) observer_();
    }

private:
    std::function<void()> observer_;
};

inline constexpr int kOffState = 0;
inline constexpr int kOnState = 1;

class Menu;

/// A row of a menu.
class MenuItem : public Observable {
public:
    /// How the row is drawn; fixed by the interface definition.
    enum class Kind { plain, toggle, separator };

    explicit MenuItem(Kind kind = Kind::plain) : kind_(kind) {}

    [[nodiscard]] Kind kind() const { return kind_; }

    [[nodiscard]] const std::string& title() const { return title_; }
    void setTitle(std::string title) {
        title_ = std::move(title);
        changed();
    }

    [[nodiscard]] const ImagePtr& image() const { return image_; }
    void setImage(ImagePtr image) {
        image_ = std::move(image);
        changed();
    }

    /// kOffState or kOnState: the mark of a toggle.
    [[nodiscard]] int state() const { return state_; }
    void setState(int state) {
        state_ = state;
        changed();
    }

    [[nodiscard]] bool isHidden() const { return hidden_; }
    void setHidden(bool hidden) {
        hidden_ = hidden;
        changed();
    }

    /// False for a row that only informs.
    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled) {
        enabled_ = enabled;
        changed();
    }

    [[nodiscard]] Menu* submenu() const { return submenu_.get(); }
    void setSubmenu(std::shared_ptr<Menu> submenu) { submenu_ = std::move(submenu); }

    void setAction(std::function<void()> action) { action_ = std::move(action); }
    /// The user chose the row: runs its action, if it has one.
    void choose() const {
        if (action_) action_();
    }

private:
    Kind kind_;
    std::string title_;
    ImagePtr image_;
    int state_ = kOffState;
    bool hidden_ = false;
    bool enabled_ = true;
    std::shared_ptr<Menu> submenu_;
    std::function<void()> action_;
};

/// Sets or takes away a row's mark; a row that is not connected has none.
inline void mark(MenuItem* item, bool on) {
    if (item != nullptr) item->setState(on ? kOnState : kOffState);
}

/// Rows from top to bottom; fixed once the interface definition has been read.
class Menu {
public:
    [[nodiscard]] const std::vector<std::unique_ptr<MenuItem>>& items() const { return items_; }
    MenuItem& add(std::unique_ptr<MenuItem> item) { return *items_.emplace_back(std::move(item)); }

private:
    std::vector<std::unique_ptr<MenuItem>> items_;
};

/// A text of the interface.
class Label : public Observable {
public:
    [[nodiscard]] const std::string& stringValue() const { return value_; }
    void setStringValue(std::string value) {
        value_ = std::move(value);
        changed();
    }

private:
    std::string value_;
};

class Button : public Observable {
public:
    [[nodiscard]] bool isHidden() const { return hidden_; }
    void setHidden(bool hidden) {
        hidden_ = hidden;
        changed();
    }

private:
    bool hidden_ = true;
};

/// The window outlet; nothing draws it.
class Window {};

/// The item in the panel.
class StatusItem : public Observable {
public:
    /// @param length -1.0 for an item as wide as its content
    explicit StatusItem(double length) : length_(length) {}

    [[nodiscard]] double length() const { return length_; }

    /// Nothing while it is cleared.
    [[nodiscard]] const std::optional<std::string>& title() const { return title_; }
    void setTitle(std::optional<std::string> title) {
        title_ = std::move(title);
        changed();
    }

    /// Null while it is cleared.
    [[nodiscard]] const ImagePtr& image() const { return image_; }
    void setImage(ImagePtr image) {
        image_ = std::move(image);
        changed();
    }

    /// Shown in place of the image while the menu is open, where a panel can.
    [[nodiscard]] const ImagePtr& alternateImage() const { return alternateImage_; }
    void setAlternateImage(ImagePtr image) {
        alternateImage_ = std::move(image);
        changed();
    }

    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }
    void setToolTip(std::string toolTip) {
        toolTip_ = std::move(toolTip);
        changed();
    }

    [[nodiscard]] bool highlightMode() const { return highlightMode_; }
    void setHighlightMode(bool on) {
        highlightMode_ = on;
        changed();
    }

    /// Not owned; null until it is set.
    [[nodiscard]] Menu* menu() const { return menu_; }
    void setMenu(Menu* menu) {
        menu_ = menu;
        changed();
    }

private:
    double length_;
    std::optional<std::string> title_;
    ImagePtr image_;
    ImagePtr alternateImage_;
    std::string toolTip_;
    bool highlightMode_ = false;
    Menu* menu_ = nullptr;
};

}  // namespace dinmala
