/// Names for the columns and headings, in the language that was chosen.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dinmala::cal {

/// "कार्तिक" or "Kartik"; months 1 to 12.
[[nodiscard]] std::string_view bsMonthName(std::uint64_t month, bool nepali);

/// "आइतवार" or "Sunday"; weekdays 1 = Sunday to 7 = Saturday.
[[nodiscard]] std::string_view weekDayName(std::uint64_t weekDay, bool nepali);

/// "आइत" or "Sun".
[[nodiscard]] std::string_view weekDayShort(std::uint64_t weekDay, bool nepali);

/// The weekday in at most two columns, "आ" or "Su".
[[nodiscard]] std::string_view weekDayLetter(std::uint64_t weekDay, bool nepali);

/// "Jan".
[[nodiscard]] std::string_view adMonthShort(std::uint64_t month);

}  // namespace dinmala::cal
