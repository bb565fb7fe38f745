// Lifecycle: the status item's set-up and the three refresh triggers.
#include "app/AppDelegate.h"

#include <utility>

#include "base/TimeZone.h"

namespace dinmala {

AppDelegate::AppDelegate(Platform platform, Outlets outlets)
    : platform_(std::move(platform)), outlets_(std::move(outlets)) {}

void AppDelegate::awakeFromNib() {
    prefs_ = platform_.preferences;
    statusItem_ = platform_.statusItemWithLength(-1.0);
    logoImage_ = loadResource("logo");
    if (outlets_.logoMenuItem != nullptr) {
        outlets_.logoMenuItem->setTitle("");
        outlets_.logoMenuItem->setImage(logoImage_);
    }
    if (outlets_.calendarMenuItem != nullptr) outlets_.calendarMenuItem->setHidden(!platform_.openCalendar);
    statusItem_->setMenu(outlets_.statusMenu);
    statusItem_->setToolTip("Dinmala");
    statusItem_->setHighlightMode(true);
    applyStartupState();
    beginWithEdition();
    beginTelling();
    updateMenuItems();
    updateData();
}

void AppDelegate::launch() {
    const Moment now = platform_.clock();
    const Clock running = std::exchange(platform_.clock, [now] { return now; });
    awakeFromNib();
    applicationDidFinishLaunching(nullptr);
    platform_.clock = running;
}

void AppDelegate::applicationDidFinishLaunching(Notification) {
    minute_ = localMinute(platform_.clock());
    isRunning_ = true;
    platform_.runLoop->everySecond([this] { checkTimer(); });
    platform_.runLoop->onSystemClockChange([this] { systemTimeChanged(nullptr); });
    platform_.runLoop->onWake([this] { systemTimeChanged(nullptr); });
    if (platform_.whenShown) {
        platform_.whenShown([this] { checkUpdate(); });
    } else {
        checkUpdate();
    }
}

void AppDelegate::checkTimer() {
    const Moment now = platform_.clock();
    const std::uint64_t minute = localMinute(now);
    // What another session of the user has chosen shows at once.
    const bool chosen = prefs_->reload();
    if (chosen) updateMenuItems();
    if (minute == minute_ && !chosen) return;
    minute_ = minute;
    refresh(now);
}

void AppDelegate::systemTimeChanged(Notification) { updateData(); }

void AppDelegate::nothingToDo(Sender) {}

void AppDelegate::openCalendar(Sender) {
    if (platform_.openCalendar) platform_.openCalendar();
}

std::uint64_t AppDelegate::localMinute(Moment now) {
    const auto minutes = std::chrono::floor<std::chrono::minutes>(machine().toLocal(now));
    return static_cast<std::uint64_t>((minutes - std::chrono::floor<std::chrono::hours>(minutes)).count());
}

ImagePtr AppDelegate::loadResource(std::string_view name) const {
    const auto path = platform_.bundle.pathForResource(name, "png");
    return path ? platform_.loadImage(*path) : nullptr;
}

}  // namespace dinmala
