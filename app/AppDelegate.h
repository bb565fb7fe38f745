/// The application's shell: it owns the status item and refreshes it, keeps the
/// user's display choices, and knows the login item and the update check.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/platform/Controls.h"
#include "app/platform/Platform.h"
#include "calendar/DataStore.h"

namespace dinmala {

/// The objects that the interface definition makes. Any may be null: what is not
/// connected is not written. They must outlive the delegate.
struct Outlets {
    Menu* statusMenu = nullptr;
    MenuItem* dateMenuItem = nullptr;
    MenuItem* descriptionMenuItem = nullptr;
    MenuItem* startupMenuItem = nullptr;
    MenuItem* logoMenuItem = nullptr;
    MenuItem* iconMenuItem = nullptr;
    MenuItem* yearMenuItem = nullptr;
    MenuItem* monthMenuItem = nullptr;
    MenuItem* dayMenuItem = nullptr;
    MenuItem* dowMenuItem = nullptr;
    MenuItem* timeMenuItem = nullptr;
    MenuItem* tithiMenuItem = nullptr;
    MenuItem* eventMenuItem = nullptr;
    Button* btnNotification = nullptr;
    Label* txtMonth = nullptr;
    Label* txtYear = nullptr;
    Label* txtTime = nullptr;
    Label* txtTithi = nullptr;
    Label* txtEvent = nullptr;
    Label* txtDow = nullptr;
    Label* txtDay = nullptr;
    Window* window = nullptr;
};

/// Whoever sent an action or a notification. Always ignored.
using Sender = const void*;
using Notification = const void*;

/// Whether a body of the update endpoint announces an update: a JSON object
/// whose "update" is the number 1, true, or the text "1".
[[nodiscard]] bool announcesUpdate(std::string_view body);

class AppDelegate {
public:
    AppDelegate(Platform platform, Outlets outlets);

    /// Starts the timer and the two other refresh triggers, then looks for an
    /// update once. To be called after awakeFromNib(), when the loop runs.
    void applicationDidFinishLaunching(Notification);
    /// Every second: refreshes when the minute of the machine's wall clock is
    /// not the one recorded.
    void checkTimer();
    /// Refreshes at once; the recorded minute stays.
    void systemTimeChanged(Notification);

    /// Asks the update endpoint, blocking, and shows the update button when it
    /// announces a newer version. True when it does.
    bool checkUpdate();

    /// Creates and fills the status item: the first refresh.
    void awakeFromNib();

    /// The boolean under one of the eight display keys in the Settings property
    /// list, read anew; false for any other key, a missing entry or file.
    [[nodiscard]] bool getPlist(std::string_view key) const;

    /// The refresh: a new store, seven pieces, labels, menu lines, and the flag
    /// or the title composed of the pieces chosen.
    void updateData();

    /// Flips the mark of the startup item and adds or removes the login item.
    void changeAppStartup(Sender);
    /// Sets the mark of the startup item to what the login-items list says.
    void applyStartupState();
    /// For rows that only inform.
    void nothingToDo(Sender);

    /// Open the vendor's home page and download page.
    void goToWeb(Sender);
    void goToUpdateURL(Sender);

    /// Whether the login-items list has an entry for this program.
    [[nodiscard]] bool isLoginItem();
    void addAsLoginItem();
    /// Removes one entry, the one that itemRefInLoginItems() gives.
    void removeAsLoginItem();
    /// The last entry whose path is this program's, compared as texts.
    [[nodiscard]] std::optional<LoginItemRef> itemRefInLoginItems();

    /// Applies the display rules (a piece turns the flag off; never nothing at
    /// all), sets the eight marks and saves the choices. Does not refresh.
    void updateMenuItems();

    /// The display toggles.
    void setIcon(Sender);
    void setYear(Sender);
    void setMonth(Sender);
    void setDay(Sender);
    void setDow(Sender);
    void setTime(Sender);
    void setTithi(Sender);
    void setEvent(Sender);

    [[nodiscard]] Window* window() const { return outlets_.window; }
    void setWindow(Window* window) { outlets_.window = window; }

    /// The item; null before awakeFromNib().
    [[nodiscard]] StatusItem* statusItem() const { return statusItem_.get(); }
    /// The store of the last refresh; null before the first.
    [[nodiscard]] const DataStore* ds() const { return ds_.get(); }
    /// The wall-clock minute last recorded, 0 to 59.
    [[nodiscard]] std::uint64_t minute() const { return minute_; }
    [[nodiscard]] const ImagePtr& statusImage() const { return statusImage_; }
    [[nodiscard]] const ImagePtr& statusHighLightImage() const { return statusHighLightImage_; }
    [[nodiscard]] const ImagePtr& logoImage() const { return logoImage_; }

private:
    /// A display key with its toggle item.
    struct Toggle {
        std::string_view key;
        MenuItem* Outlets::*item;
    };
    static const Toggle kToggles[8];

    [[nodiscard]] MenuItem* itemOf(const Toggle& toggle) const { return outlets_.*(toggle.item); }
    void flip(std::string_view key);
    [[nodiscard]] std::uint64_t localMinute() const;
    [[nodiscard]] ImagePtr loadResource(std::string_view name) const;
    [[nodiscard]] std::string siteUrl(std::string_view path) const;
    [[nodiscard]] std::string infoText(std::string_view key) const;

    Platform platform_;
    Outlets outlets_;

    std::unique_ptr<StatusItem> statusItem_;
    ImagePtr statusImage_;
    ImagePtr statusHighLightImage_;
    ImagePtr logoImage_;
    std::unique_ptr<DataStore> ds_;
    std::uint64_t minute_ = 0;
    Preferences* prefs_ = nullptr;
};

}  // namespace dinmala
