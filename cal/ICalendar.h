/// The calendar as iCalendar (RFC 5545), for programs that subscribe to it or import it.
#pragma once

#include <chrono>
#include <string>

#include "almanac/Edition.h"
#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala::cal {

struct ICalendarChoice {
    BsYear first, last;
    Language language = Language::nepali;  ///< of names and kinds; sentences are in the user's
    Digits digits = Digits::devanagari;    ///< of BS numbers
    bool months = false;                   ///< the beginning of each month too
    bool days = false;                     ///< every day with its date and tithi too
};

/// All-day events that take up no time: each event of the years, in the calendar's order.
///
/// An event keeps its UID, the BS year with the event's id, whatever day it moves to, and in both editions; of several
/// in a year the second has "-2" after it. A later `stamp` means later data: DTSTAMP and SEQUENCE come of it, so that
/// the same data gives the same bytes, and an import of newer data replaces the old.
[[nodiscard]] std::string iCalendarText(const Edition& edition, const ICalendarChoice& choice,
                                        std::chrono::sys_seconds stamp);

}  // namespace dinmala::cal
