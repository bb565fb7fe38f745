/// Small text helpers that several files share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dinmala {

/// Calls `piece(text)` for every piece between separators, empty ones included,
/// so that a text of n separators has n + 1 pieces.
template <typename Piece>
void forEachPiece(std::string_view text, char separator, Piece&& piece) {
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find(separator, begin)) != std::string_view::npos; begin = end + 1) {
        piece(text.substr(begin, end - begin));
    }
    piece(text.substr(begin));
}

/// The bytes of the UTF-8 character that a text begins with; 0 when it begins with none.
[[nodiscard]] inline std::size_t characterLength(std::string_view text) {
    const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const unsigned first = at(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0) != 0x80) return 0;
    }
    // Longer than need be, a surrogate, past the last character.
    if ((first == 0xE0 && at(1) < 0xA0) || (first == 0xED && at(1) > 0x9F) || (first == 0xF0 && at(1) < 0x90) ||
        (first == 0xF4 && at(1) > 0x8F)) {
        return 0;
    }
    return length;
}

/// `number` in decimal with at least `width` digits, zeros in front.
[[nodiscard]] inline std::string padded(std::uint64_t number, std::size_t width) {
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return digits;
}

/// The texts of a list with `separator` between them.
template <typename List>
[[nodiscard]] std::string joined(const List& texts, std::string_view separator) {
    std::string result;
    bool first = true;
    for (const std::string_view text : texts) {
        if (!first) result += separator;
        result += text;
        first = false;
    }
    return result;
}

}  // namespace dinmala
