/// Devanagari digits and numerals, and the names of weekdays and months.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/BsDate.h"

namespace dinmala {

/// Devanagari digits by value, U+0966 "०" to U+096F "९".
extern const std::array<std::string_view, 10> kDevanagariDigits;

/// 0 to 32 in Devanagari digits without a leading zero.
extern const std::array<std::string_view, 33> kDateNumerals;

/// 0 to 59 as two Devanagari digits.
extern const std::array<std::string_view, 60> kTimeNumerals;

/// Weekday names, Sunday first. "TUEDAY", "WEDENSDAY" and "THURDAY" are
/// deliberate: that is how they are spelled here.
extern const std::array<std::string_view, 7> kWeekDaysShort;
extern const std::array<std::string_view, 7> kWeekDaysLong;
extern const std::array<std::string_view, 7> kWeekDaysNepali;

/// Gregorian month names, January first. "FEBUARY" is deliberate.
extern const std::array<std::string_view, 12> kAdMonthsShort;
extern const std::array<std::string_view, 12> kAdMonthsLong;

/// BS month names, बैशाख first.
extern const std::array<std::string_view, 12> kBsMonths;

/// BS month names in Latin letters, as Nepal's English newspapers spell them.
extern const std::array<std::string_view, 12> kBsMonthsEnglish;

/// Weekday names in English, Sunday first, and AD month names in both languages, as everybody spells them.
extern const std::array<std::string_view, 7> kWeekDaysEnglish;
extern const std::array<std::string_view, 12> kAdMonthsEnglish;
extern const std::array<std::string_view, 12> kAdMonthsNepali;

/// The tithis, 1 to 30, in the spelling of the dictionary: 15 पूर्णिमा, 30 औंसी.
extern const std::array<std::string_view, 30> kTithis;

/// The same in Latin letters, as Nepal's English newspapers spell them in the names of festivals.
extern const std::array<std::string_view, 30> kTithisEnglish;

/// The name of number 1, 2, ... in a name table; "" for a number that the table
/// does not have.
template <std::size_t N>
[[nodiscard]] constexpr std::string_view nameAt(const std::array<std::string_view, N>& names, std::uint64_t number) {
    return number >= 1 && number <= N ? names[number - 1] : std::string_view{};
}

/// The language of names in what a person reads.
enum class Language { nepali, english };

/// "चतुर्दशी" or "Chaturdashi", and with its half "शुक्ल चतुर्दशी" or "Shukla Chaturdashi"; the full and the new moon have no
/// half. "" outside 1 to 30.
[[nodiscard]] std::string_view tithiName(unsigned tithi, Language language);
[[nodiscard]] std::string tithiTitle(unsigned tithi, Language language = Language::nepali);

/// "कार्तिक" or "Kartik".
[[nodiscard]] std::string_view bsMonthName(BsMonth month, Language language);

/// "नोभेम्बर" or "November", and "Nov" in both.
[[nodiscard]] std::string_view adMonthName(std::chrono::month month, Language language);
[[nodiscard]] std::string_view adMonthShort(std::chrono::month month);

/// 1 = Sunday to 7 = Saturday.
[[nodiscard]] inline unsigned weekDayNumber(std::chrono::sys_days day) {
    return std::chrono::weekday{day}.c_encoding() + 1;
}

/// "आइतवार" or "Sunday", "आइत" or "Sun", and in at most two columns "आ" or "Su", of weekDayNumber().
[[nodiscard]] std::string_view weekDayName(unsigned weekDay, Language language);
[[nodiscard]] std::string_view weekDayShort(unsigned weekDay, Language language);
[[nodiscard]] std::string_view weekDayLetter(unsigned weekDay, Language language);

}  // namespace dinmala
