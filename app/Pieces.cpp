#include "app/Pieces.h"

#include "base/Text.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"

namespace dinmala {

namespace {

/// Stands for a piece that cannot be told, on a day outside the month table.
constexpr const char* kUnknown = "–";

/// "Today's date is not in the calendar". Nepali in every language, as all that the pieces show is.
constexpr const char* kOutsideTable = "आजको मिति पात्रोमा छैन";

std::string year(const Today& today) {
    if (!today.store.coversToday()) return kUnknown;
    return DataStoreFunctions::convertStringNumber2Nepali(std::to_string(today.store.currentBSYear()));
}

std::string month(const Today& today) {
    if (!today.store.coversToday()) return kUnknown;
    return std::string{today.store.getMonthName("bs", "long", today.store.currentBSMonth())};
}

std::string day(const Today& today) {
    if (!today.store.coversToday()) return kUnknown;
    return std::string{
        DataStoreFunctions::getNepaliDateDigitFor(static_cast<std::int32_t>(today.store.getBsCurrentDay()))};
}

std::string dow(const Today& today) {
    const int weekday = intValue(today.store.getCurrentBSDayOfWeek());
    return std::string{today.store.getWeekDayName("bs", "short", static_cast<std::uint64_t>(weekday))};
}

std::string time(const Today& today) { return today.store.getCurrentBSTime(); }

/// Day and month as the almanac's lists have them, "1501" for 15 Baishakh.
std::string dayMonth(const DataStore& store) {
    return padded(store.getBsCurrentDay(), 2) + padded(store.currentBSMonth(), 2);
}

/// The names of a day's tithis or events, between them what stands between two everywhere.
template <typename Named>
std::string namesOf(const std::vector<Named>& list) {
    std::vector<std::string_view> names;
    names.reserve(list.size());
    for (const Named& one : list) names.push_back(one.name);
    return joined(names, "/ ");
}

std::string tithi(const Today& today) {
    if (!today.store.coversToday()) return kUnknown;
    if (today.almanac != nullptr) return namesOf(today.almanac->tithis);
    return joined(today.store.getDayTithi(std::to_string(today.store.currentBSYear()), dayMonth(today.store)), "/ ");
}

std::string event(const Today& today) {
    if (!today.store.coversToday()) return kOutsideTable;
    if (today.almanac != nullptr) return namesOf(today.almanac->events);
    return joined(today.store.getDayEvent(std::to_string(today.store.currentBSYear()), dayMonth(today.store)), "/ ");
}

constexpr Piece kPieces[] = {
    {"year", year, &Outlets::yearMenuItem, &Outlets::txtYear},
    {"month", month, &Outlets::monthMenuItem, &Outlets::txtMonth},
    {"day", day, &Outlets::dayMenuItem, &Outlets::txtDay},
    {"dow", dow, &Outlets::dowMenuItem, &Outlets::txtDow},
    {"time", time, &Outlets::timeMenuItem, &Outlets::txtTime},
    {"tithi", tithi, &Outlets::tithiMenuItem, &Outlets::txtTithi},
    {"event", event, &Outlets::eventMenuItem, &Outlets::txtEvent},
};

template <typename Object>
Object* valueOf(const std::map<std::string, Object*, std::less<>>& objects, std::string_view key) {
    const auto found = objects.find(key);
    return found == objects.end() ? nullptr : found->second;
}

}  // namespace

std::span<const Piece> pieces() { return kPieces; }

MenuItem* toggleOf(const Piece& piece, const Outlets& outlets) {
    return piece.toggle != nullptr ? outlets.*piece.toggle : valueOf(outlets.toggles, piece.key);
}

Label* labelOf(const Piece& piece, const Outlets& outlets) {
    return piece.label != nullptr ? outlets.*piece.label : valueOf(outlets.labels, piece.key);
}

}  // namespace dinmala
