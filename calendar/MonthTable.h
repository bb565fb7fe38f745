/// The month table's text: every BS month from BS 1999 month 1 to BS 2099
/// month 12, one record each (see MonthRecord.h), in calendar order, separated
/// by single spaces.
///
/// Made at build time by tools/make_tables from calendar/data/month_lengths.txt.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace dinmala {

inline constexpr std::string_view kMonthTable =
#include "generated/MonthTable.inc"
    ;

/// The table's first BS year and its number of months: BS year y, month m lies
/// at index (y - kFirstBsYear) * 12 + m - 1.
inline constexpr std::int32_t kFirstBsYear = 1999;
inline constexpr std::size_t kMonthCount = 1212;

}  // namespace dinmala
