/// What the options chose, the same for every command.
#pragma once

namespace dinmala::cal {

enum class Calendar { Ad, Bs };

struct Settings {
    bool json = false;
    bool nepali = true;            ///< names of months and weekdays in Nepali, else in English
    bool devanagari = true;        ///< BS numbers in Devanagari digits; AD numbers never are
    Calendar from = Calendar::Ad;  ///< in which dates are given
    bool colours = false;          ///< the output takes colours
    bool terminal = false;         ///< the output takes cursor moves
};

}  // namespace dinmala::cal
