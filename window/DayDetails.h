/// All that there is to say of the page's chosen day.
#pragma once

#include <string>
#include <vector>

#include "window/Page.h"

namespace dinmala {

struct DetailLine {
    std::string label;  ///< "Tithi"; "" where it is the line before's
    std::string text;
};

/// Both dates in both scripts, weekday, how far from today, each tithi with when it begins and ends and the sunrise
/// (Nepal's time), the festivals, how far the day can be trusted. Without tithis and festivals in a year that has no
/// lists: a line says so.
[[nodiscard]] std::vector<DetailLine> dayDetails(const Page& page);

/// The details as text to be pasted elsewhere: a line each, "Tithi: ...".
[[nodiscard]] std::string copyText(const std::vector<DetailLine>& details);

}  // namespace dinmala
