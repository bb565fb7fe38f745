// Lifecycle: the status item's set-up and the three refresh triggers.
#include "app/AppDelegate.h"

#include <utility>

#include "calendar/TimeZone.h"

namespace dinmala {

AppDelegate::AppDelegate(Platform platform, Outlets outlets) : platform_(std::move(platform)), outlets_(outlets) {}

void AppDelegate::awakeFromNib() {
    prefs_ = platform_.preferences;
    statusItem_ = platform_.statusItemWithLength(-1.0);
    logoImage_ = loadResource("logo");
    if (outlets_.logoMenuItem != nullptr) {
        outlets_.logoMenuItem->setTitle("");
        outlets_.logoMenuItem->setImage(logoImage_);
    }
    statusItem_->setMenu(outlets_.statusMenu);
    statusItem_->setToolTip("Dinmala");
    statusItem_->setHighlightMode(true);
    applyStartupState();
    updateMenuItems();
    updateData();
}

void AppDelegate::applicationDidFinishLaunching(Notification) {
    const std::uint64_t now = localMinute();
    platform_.runLoop->everySecond([this] { checkTimer(); });
    minute_ = now;
    platform_.runLoop->onSystemClockChange([this] { systemTimeChanged(nullptr); });
    platform_.runLoop->onWake([this] { systemTimeChanged(nullptr); });
    checkUpdate();
}

void AppDelegate::checkTimer() {
    const std::uint64_t now = localMinute();
    if (now == minute_) return;
    minute_ = now;
    updateData();
}

void AppDelegate::systemTimeChanged(Notification) { updateData(); }

void AppDelegate::nothingToDo(Sender) {}

std::uint64_t AppDelegate::localMinute() const {
    const auto sinceEpoch = machine().toLocal(platform_.clock()).time_since_epoch();
    const auto minutes = std::chrono::floor<std::chrono::minutes>(sinceEpoch);
    return static_cast<std::uint64_t>((minutes - std::chrono::floor<std::chrono::hours>(minutes)).count());
}

ImagePtr AppDelegate::loadResource(std::string_view name) const {
    const auto path = platform_.bundle.pathForResource(name, "png");
    return path ? platform_.loadImage(*path) : nullptr;
}

}  // namespace dinmala
