/// The next festivals and holidays, as rows to choose from.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "window/Page.h"

namespace dinmala {

enum class UpcomingFilter {
    holidays,   ///< on which everybody has the day off
    important,  ///< and those of groups and regions; the first edition's own list
    all,
};

struct UpcomingRow {
    std::chrono::sys_days day;
    std::string name;
    std::string date;  ///< "सोमवार, ७ मंसिर २०८३"
    std::string left;  ///< "in 12 days"
    Holiday holiday{};
    friend bool operator==(const UpcomingRow&, const UpcomingRow&) = default;
};

struct UpcomingRows {
    std::vector<UpcomingRow> rows;  ///< in order
    std::string whyNone;            ///< a sentence where there is no row
    friend bool operator==(const UpcomingRows&, const UpcomingRows&) = default;
};

/// What follows the page's today, as far as agenda/Upcoming.h reaches.
[[nodiscard]] UpcomingRows upcomingRows(const Page& page, UpcomingFilter filter);

}  // namespace dinmala
