// The display keys, the flag's and one a piece: their rules, their toggles, and their entries in the
// Settings property list.
#include <algorithm>
#include <array>

#include "app/AppDelegate.h"
#include "app/Pieces.h"

namespace dinmala {

namespace {

/// Shown when nothing else is.
constexpr std::array<std::string_view, 3> kDefaults = {"month", "day", "time"};

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

MenuItem* AppDelegate::itemOf(std::string_view key) const {
    if (key == kFlagKey) return outlets_.iconMenuItem;
    const auto piece = std::find_if(pieces().begin(), pieces().end(), [&](const Piece& one) { return one.key == key; });
    return piece == pieces().end() ? nullptr : toggleOf(*piece, outlets_);
}

void AppDelegate::setMark(std::string_view key, bool on) { mark(itemOf(key), on); }

void AppDelegate::updateMenuItems() {
    const auto isOn = [this](const Piece& piece) { return prefs_->boolForKey(piece.key); };
    if (std::any_of(pieces().begin(), pieces().end(), isOn)) {
        prefs_->setBoolForKey(false, kFlagKey);
    } else if (!prefs_->boolForKey(kFlagKey)) {
        for (const std::string_view key : kDefaults) prefs_->setBoolForKey(true, key);
    }
    setMark(kFlagKey, prefs_->boolForKey(kFlagKey));
    for (const Piece& piece : pieces()) setMark(piece.key, isOn(piece));
    prefs_->synchronize();
}

void AppDelegate::toggle(std::string_view key) {
    prefs_->reload();
    const MenuItem* item = itemOf(key);
    // The mark decides, not the key. An item that is not connected has no mark;
    // its key does as well.
    const bool on = item != nullptr ? item->state() == kOffState : !prefs_->boolForKey(key);
    prefs_->setBoolForKey(on, key);
    if (on && key == kFlagKey) {
        for (const Piece& piece : pieces()) {
            prefs_->setBoolForKey(false, piece.key);
            setMark(piece.key, false);
        }
    }
    updateMenuItems();
    updateData();
}

void AppDelegate::setIcon(Sender) { toggle("icon"); }
void AppDelegate::setYear(Sender) { toggle("year"); }
void AppDelegate::setMonth(Sender) { toggle("month"); }
void AppDelegate::setDay(Sender) { toggle("day"); }
void AppDelegate::setDow(Sender) { toggle("dow"); }
void AppDelegate::setTime(Sender) { toggle("time"); }
void AppDelegate::setTithi(Sender) { toggle("tithi"); }
void AppDelegate::setEvent(Sender) { toggle("event"); }

bool AppDelegate::getPlist(std::string_view key) const {
    const auto path = platform_.bundle.pathForResource("Settings", "plist");
    const bool known = key == kFlagKey || std::any_of(pieces().begin(), pieces().end(),
                                                      [&](const Piece& piece) { return piece.key == key; });
    if (!path || !known) return false;
    const auto settings = platform_.readPropertyList(*path);
    if (!settings) return false;
    const auto entry = settings->find(key);
    return entry != settings->end() && boolValue(entry->second);
}

}  // namespace dinmala
