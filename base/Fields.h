/// Fields at fixed positions of a text, and the leading-digit parsing that reads them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace dinmala {

/// A field of a text: where it begins and how many characters it has.
struct Field {
    std::size_t position;
    std::size_t length;
};

/// Fields of the date texts that are passed around.
namespace bsText {  // ddMMyyyy
inline constexpr std::size_t kLength = 8;
inline constexpr Field kDay{0, 2};
inline constexpr Field kMonthYear{2, 6};
}  // namespace bsText

namespace adText {  // begins with yyyyMMdd
inline constexpr std::size_t kLength = 8;
inline constexpr Field kDate{0, 8};
inline constexpr Field kYear{0, 4};
inline constexpr Field kMonth{4, 2};
inline constexpr Field kDay{6, 2};
}  // namespace adText

/// Leading-digit parsing: leading white space is skipped, a sign is optional,
/// digits are read up to the first other character. No digit gives 0; a number
/// beyond 32 bits gives the nearest end of the range.
[[nodiscard]] constexpr std::int32_t intValue(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
    std::int64_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > kMax + 1) value = kMax + 1;
    }
    if (negative) return static_cast<std::int32_t>(-value);
    return static_cast<std::int32_t>(value > kMax ? kMax : value);
}

/// The text of a field: shorter, or empty, where the text ends before it.
[[nodiscard]] constexpr std::string_view fieldText(std::string_view text, Field field) {
    return field.position < text.size() ? text.substr(field.position, field.length) : std::string_view{};
}

/// The number in a field; 0 where the text ends before it.
[[nodiscard]] constexpr std::int32_t fieldValue(std::string_view text, Field field) {
    return intValue(fieldText(text, field));
}

}  // namespace dinmala
