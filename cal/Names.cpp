#include "cal/Names.h"

#include <array>

#include "calendar/Names.h"

namespace dinmala::cal {

namespace {

// The model has BS months and weekdays in Devanagari; these are for --lang en.
constexpr std::array<std::string_view, 12> kBsMonthsEnglish{"Baishakh", "Jestha", "Ashadh", "Shrawan",
                                                            "Bhadra",   "Ashwin", "Kartik", "Mangsir",
                                                            "Poush",    "Magh",   "Falgun", "Chaitra"};
constexpr std::array<std::string_view, 7> kWeekDaysEnglish{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                           "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 7> kWeekDayLetters{"आ", "सो", "मं", "बु", "बि", "शु", "श"};

}  // namespace

std::string_view bsMonthName(std::uint64_t month, bool nepali) {
    return nameAt(nepali ? kBsMonths : kBsMonthsEnglish, month);
}

std::string_view weekDayName(std::uint64_t weekDay, bool nepali) {
    return nameAt(nepali ? kWeekDaysNepali : kWeekDaysEnglish, weekDay);
}

std::string_view weekDayShort(std::uint64_t weekDay, bool nepali) {
    if (!nepali) return nameAt(kWeekDaysShort, weekDay);
    std::string_view name = nameAt(kWeekDaysNepali, weekDay);
    constexpr std::string_view kDay = "वार";
    if (name.ends_with(kDay)) name.remove_suffix(kDay.size());
    return name;
}

std::string_view weekDayLetter(std::uint64_t weekDay, bool nepali) {
    return nepali ? nameAt(kWeekDayLetters, weekDay) : nameAt(kWeekDaysEnglish, weekDay).substr(0, 2);
}

std::string_view adMonthShort(std::uint64_t month) { return nameAt(kAdMonthsShort, month); }

}  // namespace dinmala::cal
