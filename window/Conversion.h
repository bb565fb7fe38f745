/// A date in the other calendar, while it is typed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "agenda/ReadDay.h"
#include "window/Page.h"

namespace dinmala {

struct Conversion {
    struct Answer {
        FoundDay day;
        std::string text;  ///< "23 November 2026 = 7 Mangsir 2083, Monday", first as it was told
    };
    std::vector<Answer> answers;  ///< two where a date of digits is one in both calendars: the nearer to today first
    std::string problem;          ///< where there is none: which part is wrong; "" for a text of blanks alone
};

/// Reads what readDate() reads, around it blanks. A date without a year is one of the present year.
[[nodiscard]] Conversion convert(std::string_view text, const Page& page);

}  // namespace dinmala
