/// The status item in the desktop's panel.
#pragma once

#include <giomm.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/Face.h"
#include "app/faces/panel/MenuExport.h"
#include "app/faces/panel/PanelHost.h"
#include "app/faces/panel/StatusNotifierItem.h"

namespace dinmala {

/// The pictures of the program that the panel needs.
struct PanelResources {
    /// The absolute path of a picture that shows nothing.
    std::string clearIcon;
    /// Ten digits for dayTile(), or null. Asked for when a panel needs the tile.
    std::function<ImagePtr()> digits;
};

/// Shows the status title as text where the panel can, else as a tile with the
/// day's number; with an image, the image on every panel. There is always something to
/// see and to click: a title of blanks is shown by the tile too. It registers with
/// whatever panel comes, again after a restart.
class PanelFace : public Face {
public:
    /// @param connection  the process's shared connection to the session bus
    /// @param onBusClosed called from the main loop, once, when the bus has gone:
    ///                    nothing can be shown any more
    PanelFace(Glib::RefPtr<Gio::DBus::Connection> connection, PanelResources resources,
              std::function<void()> onBusClosed);
    ~PanelFace() override;
    PanelFace(const PanelFace&) = delete;
    PanelFace& operator=(const PanelFace&) = delete;

    void setOutlets(const Outlets& outlets) override { outlets_ = outlets; }
    [[nodiscard]] std::unique_ptr<StatusItem> statusItemWithLength(double length) override;
    /// On show is an item that a panel has read; after a second without a sign,
    /// or two without a panel, waiting for longer is of no use.
    void whenShown(std::function<void()> callback) override;
    /// Calls once, after so many seconds, if no panel holds the item then.
    void ifUnseen(unsigned seconds, std::function<void()> callback);
    /// Calls once if panels cannot read the menu; the item is there all the same.
    void ifMenuFails(std::function<void()> callback) { menuFailed_ = std::move(callback); }
    /// Calls at each click on the item, in panels where that does good. Without it a click opens the menu, as it
    /// does in the others. To be called before statusItemWithLength().
    void whenClicked(std::function<void()> callback) { clicked_ = std::move(callback); }
    /// See StatusNotifierItem.
    [[nodiscard]] std::string takeToken() { return object_.takeToken(); }

private:
    void changed();
    void flush();
    void registerItem();
    void waitToBeShown();
    [[nodiscard]] ItemView view();
    void drawSquares(const ImagePtr& image);
    void drawTile(const std::string& day);

    Glib::RefPtr<Gio::DBus::Connection> connection_;
    PanelResources resources_;
    Outlets outlets_;
    StatusItem* item_ = nullptr;

    sigc::connection closed_;
    sigc::connection pendingFlush_;
    sigc::connection retry_;
    sigc::connection shownTimer_;
    sigc::connection unseenTimer_;
    std::function<void()> shownCallback_;

    std::unique_ptr<MenuExport> menu_;
    bool menuIsExported_ = false;
    std::function<void()> menuFailed_;
    std::function<void()> clicked_;
    std::string registeredAt_;
    bool isTaken_ = false;
    bool wasRead_ = false;
    int refusals_ = 0;

    /// The last pictures made, and what of: the shell loads and says the same each minute.
    ImagePtr squaredImage_;
    std::vector<Pixmap> squared_;
    std::string squaredPath_;
    std::string tileDay_;
    std::vector<Pixmap> tile_;

    StatusNotifierItem object_;
    PanelHost host_;
};

}  // namespace dinmala
