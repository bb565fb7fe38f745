/// The interface definition, read from a resource file: menu rows in order with
/// their titles and actions, the labels, the update button, outlets by name.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/AppDelegate.h"
#include "app/platform/Controls.h"

namespace dinmala {

/// Why a definition cannot be used, in words for whoever edits it.
class InterfaceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Interface {
public:
    /// Makes the objects that a definition describes.
    /// @param definition the text of resources/MainMenu.json; its form is told in
    ///                   docs/interface-definition.md
    /// @throws InterfaceError when the text is not a definition, names an outlet
    ///         or an action that does not exist, or names one outlet twice
    explicit Interface(std::string_view definition);

    [[nodiscard]] const Outlets& outlets() const { return outlets_; }

    /// Connects the rows' actions. Both must outlive the interface's use.
    /// @param terminate what the row with the action "terminate:" does
    void connect(AppDelegate& delegate, const std::function<void()>& terminate);

private:
    struct Builder;

    Menu statusMenu_;
    std::vector<std::unique_ptr<Label>> labels_;
    std::vector<std::unique_ptr<Button>> buttons_;
    Outlets outlets_;
    std::map<MenuItem*, std::string> actions_;
};

}  // namespace dinmala
