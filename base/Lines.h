/// Data files line by line: comments, words, numbers of fixed width.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace dinmala {

/// The words of a line, at blanks and tabs.
[[nodiscard]] inline std::vector<std::string_view> wordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    constexpr std::string_view kBlanks = " \t";
    for (std::size_t at = line.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = line.find_first_of(kBlanks, at);
        words.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(kBlanks, end);
    }
    return words;
}

/// A number of exactly `width` Western digits, at most nine; nothing for any other text.
[[nodiscard]] constexpr std::optional<int> fixedNumber(std::string_view text, std::size_t width) {
    if (text.size() != width || width == 0 || width > 9) return std::nullopt;
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

/// Calls `handle(line)` for each line that holds more than blanks and a comment, which "#"
/// begins and which is cut off where `withComments` is set. It gives what is wrong with the
/// line, or an empty text.
///
/// @return the first line that is wrong, or that has a carriage return; nothing when all are right
template <typename Handle>
[[nodiscard]] std::optional<TextError> forEachDataLine(std::string_view text, Handle&& handle,
                                                       bool withComments = true) {
    std::size_t number = 0;
    while (!text.empty()) {
        ++number;
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (const std::size_t cr = line.find('\r'); cr != std::string_view::npos) {
            return TextError{number, cr + 1, "has a carriage return"};
        }
        if (withComments) line = line.substr(0, line.find('#'));
        if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
        if (std::string why = handle(line); !why.empty()) return TextError{number, 0, std::move(why)};
    }
    return std::nullopt;
}

}  // namespace dinmala
