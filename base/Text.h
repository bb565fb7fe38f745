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
