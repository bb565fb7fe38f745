// The eight display keys: their rules, their toggles, and their entries in the
// Settings property list.
#include <algorithm>
#include <array>

#include "app/AppDelegate.h"

namespace dinmala {

/// The flag first, then the pieces in the order of the title.
const AppDelegate::Toggle AppDelegate::kToggles[8] = {
    {"icon", &Outlets::iconMenuItem},   {"year", &Outlets::yearMenuItem},   {"month", &Outlets::monthMenuItem},
    {"day", &Outlets::dayMenuItem},     {"dow", &Outlets::dowMenuItem},     {"time", &Outlets::timeMenuItem},
    {"tithi", &Outlets::tithiMenuItem}, {"event", &Outlets::eventMenuItem},
};

namespace {

constexpr std::string_view kFlag = "icon";
/// Shown when nothing else is.
constexpr std::array<std::string_view, 3> kDefaults = {"month", "day", "time"};

void setMark(MenuItem* item, bool on) {
    if (item != nullptr) item->setState(on ? kOnState : kOffState);
}

/// The boolean that a property-list value stands for: a number that is not 0, or
/// a text that begins with Y, T or a digit from 1 to 9 after blanks, a sign and
/// zeros.
bool boolValue(const PropertyValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        std::size_t i = text->find_first_not_of(" \t");
        if (i == std::string::npos) return false;
        if ((*text)[i] == '+' || (*text)[i] == '-') ++i;
        i = text->find_first_not_of('0', i);
        return i != std::string::npos && std::string_view{"YyTt123456789"}.find((*text)[i]) != std::string_view::npos;
    }
    if (const auto* boolean = std::get_if<bool>(&value)) return *boolean;
    if (const auto* number = std::get_if<std::int64_t>(&value)) return *number != 0;
    return std::get<double>(value) != 0.0;
}

}  // namespace

void AppDelegate::updateMenuItems() {
    const auto isOn = [this](const Toggle& toggle) { return prefs_->boolForKey(toggle.key); };
    if (std::any_of(std::begin(kToggles) + 1, std::end(kToggles), isOn)) prefs_->setBoolForKey(false, kFlag);
    if (std::none_of(std::begin(kToggles), std::end(kToggles), isOn)) {
        for (const std::string_view key : kDefaults) prefs_->setBoolForKey(true, key);
    }
    for (const Toggle& toggle : kToggles) setMark(itemOf(toggle), isOn(toggle));
    prefs_->synchronize();
}

void AppDelegate::flip(std::string_view key) {
    const auto* toggle =
        std::find_if(std::begin(kToggles), std::end(kToggles), [&](const Toggle& one) { return one.key == key; });
    const MenuItem* item = itemOf(*toggle);
    // The mark decides, not the key. An item that is not connected has no mark;
    // its key does as well.
    const bool on = item != nullptr ? item->state() == kOffState : !prefs_->boolForKey(key);
    prefs_->setBoolForKey(on, key);
    if (on && key == kFlag) {
        for (const Toggle& piece : kToggles) {
            if (piece.key == kFlag) continue;
            prefs_->setBoolForKey(false, piece.key);
            setMark(itemOf(piece), false);
        }
    }
    updateMenuItems();
    updateData();
}

void AppDelegate::setIcon(Sender) { flip("icon"); }
void AppDelegate::setYear(Sender) { flip("year"); }
void AppDelegate::setMonth(Sender) { flip("month"); }
void AppDelegate::setDay(Sender) { flip("day"); }
void AppDelegate::setDow(Sender) { flip("dow"); }
void AppDelegate::setTime(Sender) { flip("time"); }
void AppDelegate::setTithi(Sender) { flip("tithi"); }
void AppDelegate::setEvent(Sender) { flip("event"); }

bool AppDelegate::getPlist(std::string_view key) const {
    const auto path = platform_.bundle.pathForResource("Settings", "plist");
    const bool known =
        std::any_of(std::begin(kToggles), std::end(kToggles), [&](const Toggle& toggle) { return toggle.key == key; });
    if (!path || !known) return false;
    const auto settings = platform_.readPropertyList(*path);
    if (!settings) return false;
    const auto entry = settings->find(key);
    return entry != settings->end() && boolValue(entry->second);
}

}  // namespace dinmala
