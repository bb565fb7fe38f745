/// How a calendar is shown: the language of names and the digits of BS numbers, as a person has chosen them for every
/// face.
#pragma once

#include <string_view>

#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala {

struct PageLook {
    Language language = Language::nepali;
    Digits digits = Digits::devanagari;
    friend bool operator==(const PageLook&, const PageLook&) = default;
};

/// How a look is kept: two keys, and the words of their values. Another word is the default.
inline constexpr std::string_view kLanguageKey = "language";
inline constexpr std::string_view kDigitsKey = "digits";
[[nodiscard]] std::string_view keptWord(Language language);
[[nodiscard]] std::string_view keptWord(Digits digits);
[[nodiscard]] PageLook keptLook(std::string_view language, std::string_view digits);

}  // namespace dinmala
