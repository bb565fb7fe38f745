#include "calendar/DataStoreFunctions.h"

#include <cstdlib>

#include "base/Names.h"
#include "base/TimeZone.h"

namespace dinmala {

namespace {

template <std::size_t N>
std::string_view numeral(const std::array<std::string_view, N>& table, std::int32_t number) {
    const bool inTable = number >= 0 && static_cast<std::size_t>(number) < N;
    return table[inTable ? static_cast<std::size_t>(number) : 0];
}

}  // namespace

std::string_view DataStoreFunctions::getNepaliTimeDigitFor(std::int32_t number) {
    return numeral(kTimeNumerals, number);
}

std::string_view DataStoreFunctions::getNepaliDateDigitFor(std::int32_t number) {
    return numeral(kDateNumerals, number);
}

std::string_view DataStoreFunctions::getNameForWeekDayInCalendarAndFormat(std::uint64_t weekDay, bool inCalendar,
                                                                          bool andFormat) {
    const std::uint64_t number = weekDay % 8;
    if (inCalendar) return nameAt(kWeekDaysNepali, number);
    return nameAt(andFormat ? kWeekDaysLong : kWeekDaysShort, number);
}

std::string_view DataStoreFunctions::getNameForMonthInCalendarAndFormat(std::uint64_t month, bool inCalendar,
                                                                        bool andFormat) {
    if (inCalendar) return nameAt(kBsMonths, month % 13);
    return nameAt(andFormat ? kAdMonthsLong : kAdMonthsShort, month);
}

std::string DataStoreFunctions::convertNumber2Nepali(std::int32_t number) {
    return convertStringNumber2Nepali(std::to_string(std::abs(std::int64_t{number})));
}

std::string DataStoreFunctions::convertStringNumber2Nepali(std::string_view text) {
    std::string result;
    result.reserve(text.size() * kDevanagariDigits[0].size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xC0) continue;  // the rest of a character that was counted
        const std::size_t value = byte >= '0' && byte <= '9' ? std::size_t{byte} - '0' : 0;
        result += kDevanagariDigits[value];
        if (byte >= 0xF0) result += kDevanagariDigits[0];  // two UTF-16 units
    }
    return result;
}

std::uint64_t DataStoreFunctions::daysBetween(Moment a, Moment b) { return calendarDaysBetween(a, b); }

}  // namespace dinmala
