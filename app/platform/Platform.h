/// What the shell needs of the machine, as interfaces, functions and values.
/// No system header is included here.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "almanac/Edition.h"
#include "app/platform/Controls.h"
#include "base/Clock.h"
#include "desktop/Bundle.h"
#include "desktop/LoginItems.h"
#include "desktop/Notifier.h"
#include "desktop/Preferences.h"
#include "desktop/RunLoop.h"

namespace dinmala {

/// Gives the text that takes the place of another; nothing where that stays.
using ChangeText = std::function<std::optional<std::string>(const std::string& text)>;

struct Platform {
    Clock clock = systemNow;
    Bundle bundle;

    /// Must outlive the shell.
    Preferences* preferences = nullptr;
    LoginItems* loginItems = nullptr;
    RunLoop* runLoop = nullptr;

    /// An edition of the calendar as it stands now; holds until the next call. Without it the shell shows the
    /// first edition, and knows no other.
    std::function<const Edition&(EditionId)> edition = nullptr;
    /// The edition that was asked for at the start, which goes before the one that the preferences name.
    std::optional<EditionId> askedEdition = std::nullopt;
    /// Tells the user something in a sentence. Without it nothing is told.
    std::function<void(const std::string&)> tell = nullptr;

    /// Shows notices beside whatever the user does. Without it festivals are told of nowhere. Must outlive the shell,
    /// but its answers may not.
    Notifier* notifier = nullptr;
    /// Changes the text of what was told of festivals, as StateFile::change(); gives why it could not be kept, "" when
    /// it was. Without it nothing is kept.
    std::function<std::string(const ChangeText& change)> changeState = nullptr;
    /// Shows a day in the month window. Without it there is none.
    std::function<void(std::chrono::sys_days day, const std::string& token)> showDay = nullptr;

    /// A new item in the status bar.
    std::function<std::unique_ptr<StatusItem>(double length)> statusItemWithLength;
    /// Calls back once, on the main loop, when the item is on show; what takes
    /// long waits for it. Without it nothing waits.
    std::function<void(std::function<void()> callback)> whenShown = nullptr;
    /// An image, or null for a file that is absent or unreadable.
    std::function<ImagePtr(const std::string& path)> loadImage;
    /// A property list whose root is a dictionary, or nothing.
    std::function<std::optional<PropertyList>(const std::string& path)> readPropertyList;
    /// A blocking HTTP GET: the whole body, or nothing when the fetch fails.
    std::function<std::optional<std::string>(const std::string& url)> httpGet;
    /// Opens the month window. Without it there is none, and no row for it.
    std::function<void()> openCalendar = nullptr;
    /// Asks the desktop to open an address in the user's browser.
    std::function<void(const std::string& url)> openUrl;
};

}  // namespace dinmala
