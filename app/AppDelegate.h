/// The application's shell: it owns the status item and refreshes it, keeps the
/// user's display choices, and knows the login item and the update check.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agenda/FestivalNotice.h"
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
    MenuItem* noteMenuItem = nullptr;            ///< how far the date can be trusted; hidden when it surely can
    MenuItem* currentEditionMenuItem = nullptr;  ///< the two rows of the choice between editions
    MenuItem* firstEditionMenuItem = nullptr;
    MenuItem* tellMenuItem = nullptr;       ///< above what is told of festivals; hidden where nobody shows notices
    MenuItem* tellNeverMenuItem = nullptr;  ///< three rows of when, two of what
    MenuItem* tellEveningMenuItem = nullptr;
    MenuItem* tellMorningMenuItem = nullptr;
    MenuItem* tellHolidaysMenuItem = nullptr;
    MenuItem* tellAllMenuItem = nullptr;
    MenuItem* tellLeftMenuItem = nullptr;  ///< hidden while there is no festival that is left out
    MenuItem* calendarMenuItem = nullptr;  ///< opens the calendar; hidden where there is none
    /// The toggles and labels of pieces that have no member above, by their keys.
    std::map<std::string, MenuItem*, std::less<>> toggles = {};
    std::map<std::string, Label*, std::less<>> labels = {};
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

    /// The start: awakeFromNib() and applicationDidFinishLaunching() at one
    /// moment, so that no minute turns unseen between them.
    void launch();

    /// Records the minute, starts the timer and the two other refresh triggers,
    /// and looks for an update once, when the item is on show
    /// (Platform::whenShown). To be called after awakeFromNib().
    void applicationDidFinishLaunching(Notification);
    /// Every second: records the minute of the machine's wall clock and refreshes
    /// when it is not the one recorded, or when the choices were changed elsewhere.
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

    /// The refresh: a new store, the pieces, labels, menu lines, and the flag or
    /// the title composed of the pieces chosen. All of it tells of one moment: the
    /// clock is read once. Choices that were made elsewhere are taken over first.
    void updateData();

    /// Flips the mark of the startup item and adds or removes the login item.
    void changeAppStartup(Sender);
    /// Sets the mark of the startup item to what the login-items list says.
    void applyStartupState();
    /// For rows that only inform.
    void nothingToDo(Sender);

    /// Whether there is a vendor's site to ask and to show: a host is set, and it is
    /// not the reserved name that stands for none.
    [[nodiscard]] bool hasSite() const;
    /// Opens the month window.
    void openCalendar(Sender);
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

    /// Flips the display key of the flag or of a piece, as its toggle's mark says
    /// it stands; the actions below are this for one key each.
    void toggle(std::string_view key);
    void setIcon(Sender);
    void setYear(Sender);
    void setMonth(Sender);
    void setDay(Sender);
    void setDow(Sender);
    void setTime(Sender);
    void setTithi(Sender);
    void setEvent(Sender);

    /// The edition that is shown, as it stands now; holds until the next call.
    [[nodiscard]] const Edition& edition() const;
    /// The one that was asked for at the start, until another is chosen in the menu.
    [[nodiscard]] std::optional<EditionId> askedEdition() const { return platform_.askedEdition; }
    /// Choose the edition of the calendar, keep the choice and refresh.
    void setCurrentEdition(Sender);
    void setFirstEdition(Sender);

    /// Choose when notices of festivals come and of what they tell, keep the choice and refresh.
    void tellNever(Sender);
    void tellInEvening(Sender);
    void tellInMorning(Sender);
    void tellOfHolidays(Sender);
    void tellOfAll(Sender);
    /// Tells again of the festivals that were left out by a notice's button.
    void tellOfLeft(Sender);

    [[nodiscard]] Window* window() const { return outlets_.window; }
    void setWindow(Window* window) { outlets_.window = window; }

    /// The item; null before awakeFromNib().
    [[nodiscard]] StatusItem* statusItem() const { return statusItem_.get(); }
    /// The store of the last refresh, its clock still at that moment; null before
    /// the first.
    [[nodiscard]] const DataStore* ds() const { return ds_.get(); }
    /// The wall-clock minute last recorded, 0 to 59.
    [[nodiscard]] std::uint64_t minute() const { return minute_; }
    [[nodiscard]] const ImagePtr& statusImage() const { return statusImage_; }
    [[nodiscard]] const ImagePtr& statusHighLightImage() const { return statusHighLightImage_; }
    [[nodiscard]] const ImagePtr& logoImage() const { return logoImage_; }

private:
    [[nodiscard]] MenuItem* itemOf(std::string_view key) const;
    [[nodiscard]] EditionId editionId() const;
    void setEdition(EditionId edition);
    void beginWithEdition();
    void showEdition(EditionId edition, const AlmanacDay* today);
    [[nodiscard]] TellChoice tellChoice() const;
    void chooseTelling(std::string_view value, std::string_view key);
    void beginTelling();
    void showTelling();
    void tellOfFestivals(Moment now);
    void tell(const FestivalNotice& due);
    void keepTold(const ChangeText& change);
    void setMark(std::string_view key, bool on);
    void refresh(Moment now);
    void showTitle(const std::vector<std::string>& texts);
    [[nodiscard]] static std::uint64_t localMinute(Moment now);
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
    bool isRunning_ = false;  ///< after the start; a notice would come too early there, the desktop starts as well
    ToldFestivals told_;
    bool toldIsLost_ = false;  ///< and the user knows
};

}  // namespace dinmala
