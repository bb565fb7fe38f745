/// A year of the almanac in few bytes, as the program carries it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "almanac/Almanac.h"

namespace dinmala {

/// The bytes of a year. REQUIRES: a year that parseYearFile() gave.
[[nodiscard]] std::string packYear(const YearAlmanac& year);

/// The year of the bytes that packYear() gave.
[[nodiscard]] YearAlmanac unpackYear(std::string_view bytes);

/// What stands at the head of the bytes, without reading the days.
struct PackedHead {
    BsYear year;
    bool published = false;
    std::chrono::sys_days first;
    std::array<std::uint8_t, 12> lengths{};
};
[[nodiscard]] PackedHead packedHead(std::string_view bytes);

/// One day of the bytes; nothing for a day that the year does not have.
[[nodiscard]] std::optional<YearDay> unpackDay(std::string_view bytes, BsMonth month, BsDay day);

}  // namespace dinmala
