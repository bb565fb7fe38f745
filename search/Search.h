/// A text that a person types into the desktop's search, and the days that it stands for. What is not clearly a date or
/// a festival stands for none: every other program's search is asked the same at every key.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "almanac/Edition.h"
#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala {

struct SearchHit {
    std::chrono::sys_days day;
    CalendarKind told = CalendarKind::ad;  ///< of a typed date: the calendar that it is one of
    std::uint16_t event = 0;               ///< of a festival: its event; 0 for a typed date
    friend bool operator==(const SearchHit&, const SearchHit&) = default;
};

/// The days of a text, at most five, best first. These are read:
///
/// - a date as readDate() reads it, also with "गते", "23rd", "BS" or "in AD" beside it, but not eight digits alone.
///   One of digits that is a date in both calendars is both, the nearer to today first; one without its year is
///   this year's, and when that has passed, or is none, that of the next year that has it
/// - "today", "today bs", "nepali date", "भोलि" and the like
/// - a festival (search/FestivalNames.h), its next days or those of a year: "tihar", "दशैं 2084", "dashain 2027"
[[nodiscard]] std::vector<SearchHit> search(std::string_view text, const Edition& edition, std::chrono::sys_days today);

/// A hit as text, for a desktop that asks for its words later: "2026-11-23 ad", "2026-11-08 66".
[[nodiscard]] std::string hitId(const SearchHit& hit);

/// Nothing for another text, a day outside the table, and an event that is not on the day.
[[nodiscard]] std::optional<SearchHit> hitOf(std::string_view id, const Edition& edition);

struct HitWords {
    std::string name;  ///< the date in the other calendar and its weekday; the festival and its BS date
    /// Of a festival its AD date and weekday, of a BS date itself; tithi, how far away, the day's public holiday, and
    /// how far it can be trusted.
    std::string description;
    std::string copy;  ///< both dates, to be pasted elsewhere
};

[[nodiscard]] HitWords hitWords(const SearchHit& hit, const Edition& edition, std::chrono::sys_days today,
                                Language language, Digits digits);

}  // namespace dinmala
