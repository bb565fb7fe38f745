/// A year's list: tokens joined by single spaces, split anew by every query.
///
/// A token is a head of fixed length (day and month, or an AD date) and an id
/// that reaches to the token's end: "0101428" is day 1 of month 1, id "428".
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace dinmala {

/// A key and its text: an id with a name, or a year with a list.
using KeyedText = std::pair<std::string_view, std::string_view>;

/// Texts by key. Keys and values are views into the texts that a catalogue was
/// built from.
using TextMap = std::unordered_map<std::string_view, std::string_view>;

/// A map of the entries; a later entry replaces an earlier one of its key.
[[nodiscard]] TextMap toTextMap(std::span<const KeyedText> entries);

/// The same, made once for a process where the entries are `constants` of the program.
[[nodiscard]] std::shared_ptr<const TextMap> sharedTextMap(std::span<const KeyedText> entries,
                                                           std::span<const KeyedText> constants);

struct YearToken {
    std::string_view head;
    std::string_view id;
};

inline constexpr std::size_t kDayMonthLength = 4;  ///< ddMM
inline constexpr std::size_t kAdDateLength = 8;    ///< yyyyMMdd

/// Calls `handle(YearToken)` for each token in list order. A token shorter than
/// its head is dropped and the walk goes on.
template <typename Handle>
void forEachToken(std::string_view list, std::size_t headLength, Handle&& handle) {
    forEachPiece(list, ' ', [&](std::string_view token) {
        if (token.size() < headLength) return;
        handle(YearToken{token.substr(0, headLength), token.substr(headLength)});
    });
}

/// The names of a day's tokens in list order: those whose first four characters
/// are exactly `dayMonth`. Tokens whose id has no name are left out. Empty when
/// the year has no list.
[[nodiscard]] std::vector<std::string> namesOfDay(const TextMap& lists, const TextMap& names, std::string_view year,
                                                  std::string_view dayMonth);

}  // namespace dinmala
