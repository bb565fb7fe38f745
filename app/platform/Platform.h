/// What the shell needs of the machine, as interfaces, functions and values.
/// No system header is included here.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/platform/Controls.h"
#include "calendar/Clock.h"

namespace dinmala {

/// The user's choices: a persistent map from key to boolean.
class Preferences {
public:
    virtual ~Preferences() = default;

    /// False for a key that was never written, or when nothing can be read.
    [[nodiscard]] virtual bool boolForKey(std::string_view key) const = 0;
    virtual void setBoolForKey(bool value, std::string_view key) = 0;
    /// Saves what was set. False when it could not be kept; the user has then
    /// been told, the old file is as it was, and the choices hold for this run.
    virtual bool synchronize() = 0;
};

/// One entry of the login-items list, as LoginItems::snapshot() gave it.
struct LoginItemRef {
    std::string id;
};

/// The programs that the desktop starts at login, in order.
class LoginItems {
public:
    virtual ~LoginItems() = default;

    /// The entries in list order; nothing when the list cannot be opened.
    [[nodiscard]] virtual std::optional<std::vector<LoginItemRef>> snapshot() = 0;
    /// The absolute path of the program that an entry starts; nothing when it
    /// has none.
    [[nodiscard]] virtual std::optional<std::string> resolve(const LoginItemRef& entry) = 0;
    /// Adds an entry for a program at the end of the list, whether or not it has
    /// one. False when it could not be kept; the user has then been told.
    virtual bool append(const std::string& path) = 0;
    /// As append(), for taking an entry away.
    virtual bool remove(const LoginItemRef& entry) = 0;
};

/// The main loop's sources. All callbacks come on the loop's thread, one at a
/// time, and stay registered as long as the loop lives.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    virtual void everySecond(std::function<void()> callback) = 0;
    /// The system's wall clock was set.
    virtual void onSystemClockChange(std::function<void()> callback) = 0;
    /// The machine woke from sleep.
    virtual void onWake(std::function<void()> callback) = 0;
};

/// A scalar of a property list; other entries are left out.
using PropertyValue = std::variant<bool, std::int64_t, double, std::string>;
using PropertyList = std::map<std::string, PropertyValue, std::less<>>;

/// The program's own files and facts.
struct Bundle {
    /// The program's identity: the absolute path of its executable.
    std::string bundlePath;
    /// The file of a resource such as "logo", "png"; nothing when it is absent.
    std::function<std::optional<std::string>(std::string_view name, std::string_view type)> pathForResource;
    /// The information property list.
    PropertyList info;
};

struct Platform {
    Clock clock = systemNow;
    Bundle bundle;

    /// Must outlive the shell.
    Preferences* preferences = nullptr;
    LoginItems* loginItems = nullptr;
    RunLoop* runLoop = nullptr;

    /// A new item in the status bar.
    std::function<std::unique_ptr<StatusItem>(double length)> statusItemWithLength;
    /// An image, or null for a file that is absent or unreadable.
    std::function<ImagePtr(const std::string& path)> loadImage;
    /// A property list whose root is a dictionary, or nothing.
    std::function<std::optional<PropertyList>(const std::string& path)> readPropertyList;
    /// A blocking HTTP GET: the whole body, or nothing when the fetch fails.
    std::function<std::optional<std::string>(const std::string& url)> httpGet;
    /// Asks the desktop to open an address in the user's browser.
    std::function<void(const std::string& url)> openUrl;
};

}  // namespace dinmala
