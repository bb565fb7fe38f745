/// What the options chose, the same for every command.
#pragma once

#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala::cal {

struct Settings {
    bool json = false;
    Language language = Language::nepali;  ///< of the names of months and weekdays
    Digits digits = Digits::devanagari;    ///< of BS numbers; AD numbers are always in Western ones
    CalendarKind from = CalendarKind::ad;  ///< in which dates are given
    bool colours = false;                  ///< the output takes colours
    bool terminal = false;                 ///< the output takes cursor moves
};

}  // namespace dinmala::cal
