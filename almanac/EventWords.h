/// What else events are called than by the names of their editions; the ids are the same in both.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "almanac/YearList.h"

namespace dinmala {

/// An event's English name; "" where almanac/data/event_names_english.txt has none, as of the less known ones.
[[nodiscard]] std::string_view englishEventName(std::uint16_t id);

/// The English names by id.
[[nodiscard]] std::span<const KeyedText> englishEventNames();

}  // namespace dinmala
