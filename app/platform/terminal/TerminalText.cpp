#include "app/platform/terminal/TerminalText.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>

namespace dinmala {

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr wchar_t kVirama = 0x094D;
constexpr wchar_t kZeroWidthJoiner = 0x200D;

/// The columns of one character; 0 for one that joins the character before it.
int widthOf(wchar_t c) {
    const int width = wcwidth(c);
    return width < 0 ? 0 : width;
}

/// Devanagari signs that are written on or beside the letter before them; some
/// of them take a column of their own.
bool isDevanagariSign(wchar_t c) {
    return (c >= 0x0900 && c <= 0x0903) || (c >= 0x093A && c <= 0x094F && c != 0x093D) ||
           (c >= 0x0951 && c <= 0x0957) || (c == 0x0962 || c == 0x0963);
}

/// The end of the letter that starts at `from`, with all that is written on it.
std::size_t letterEnd(std::wstring_view text, std::size_t from) {
    std::size_t end = from + 1;
    while (end < text.size()) {
        const wchar_t last = text[end - 1];
        const bool joins = widthOf(text[end]) == 0 || isDevanagariSign(text[end]) || last == kZeroWidthJoiner ||
                           (last == kVirama && text[end] != L' ');
        if (!joins) break;
        ++end;
    }
    return end;
}

}  // namespace

std::wstring decodeForTerminal(std::string_view utf8) {
    std::wstring text;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto first = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = first < 0x80   ? 1
                                   : first < 0xC2 ? 0
                                   : first < 0xE0 ? 2
                                   : first < 0xF0 ? 3
                                   : first < 0xF5 ? 4
                                                  : 0;
        std::uint32_t code = length < 2 ? first : first & (0xFFU >> (length + 1));
        bool good = length > 0 && i + length <= utf8.size();
        for (std::size_t k = 1; good && k < length; ++k) {
            const auto next = static_cast<unsigned char>(utf8[i + k]);
            good = (next & 0xC0) == 0x80;
            code = code << 6 | (next & 0x3FU);
        }
        constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
        good = good && code >= kSmallest[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
        if (!good) {
            text += kReplacement;
            ++i;
            continue;
        }
        const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
        text += control ? L' ' : static_cast<wchar_t>(code);
        i += length;
    }
    return text;
}

int columnsOf(std::wstring_view text) {
    int columns = 0;
    for (const wchar_t c : text) columns += widthOf(c);
    return columns;
}

std::vector<std::wstring> wrapText(std::wstring_view text, int width) {
    std::vector<std::wstring> lines(1);
    int used = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t wordStart = std::min(text.find_first_not_of(L' ', at), text.size());
        const std::size_t wordEnd = std::min(text.find(L' ', wordStart), text.size());
        const std::wstring_view blanks = text.substr(at, wordStart - at);
        const std::wstring_view word = text.substr(wordStart, wordEnd - wordStart);
        at = wordEnd;

        if (used + columnsOf(blanks) + columnsOf(word) <= width) {
            lines.back().append(blanks).append(word);
            used += columnsOf(blanks) + columnsOf(word);
            continue;
        }
        if (used > 0 && !word.empty()) {
            lines.emplace_back();
            used = 0;
        }
        for (std::size_t from = 0; from < word.size();) {
            std::wstring_view letter = word.substr(from, letterEnd(word, from) - from);
            while (letter.size() > 1 && columnsOf(letter) > width) letter.remove_suffix(1);
            from += letter.size();
            const int columns = columnsOf(letter);
            if (columns > width) continue;
            if (used + columns > width) {
                lines.emplace_back();
                used = 0;
            }
            lines.back() += letter;
            used += columns;
        }
    }
    return lines;
}

}  // namespace dinmala
