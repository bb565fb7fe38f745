/// The fixed positions of a month record, and the one leading-digit parser.
///
/// A month record is 25 ASCII digits, "0120703120130414201305141": BS month 01
/// of BS year 2070 has 31 days, from AD 2013-04-14 to 2013-05-14, and begins on
/// a Sunday (1).
#pragma once

#include <cstddef>

#include "base/Fields.h"

namespace dinmala {

namespace record {

inline constexpr std::size_t kLength = 25;

inline constexpr Field kBsMonth{0, 2};
inline constexpr Field kBsYear{2, 4};
inline constexpr Field kBsMonthYear{0, 6};  ///< MMyyyy, one number for a month
inline constexpr Field kBsNoOfDays{6, 2};
inline constexpr Field kAdStart{8, 8};  ///< yyyyMMdd of the first day
inline constexpr Field kAdStartYear{8, 4};
inline constexpr Field kAdStartMonth{12, 2};
inline constexpr Field kAdStartDay{14, 2};
inline constexpr Field kAdEnd{16, 8};  ///< yyyyMMdd of the last day
inline constexpr Field kAdEndYear{16, 4};
inline constexpr Field kAdEndMonth{20, 2};
inline constexpr Field kAdEndDay{22, 2};
inline constexpr Field kFirstWeekDay{24, 1};  ///< 1 = Sunday to 7 = Saturday

}  // namespace record

}  // namespace dinmala
