#include "app/faces/terminal/TerminalText.h"

#include <glib.h>

#include <algorithm>
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
    while (!utf8.empty()) {
        const gunichar code = g_utf8_get_char_validated(utf8.data(), static_cast<gssize>(utf8.size()));
        const bool good = code < 0x110000;  // else one of two marks for what is wrong
        const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
        text += !good ? kReplacement : control ? L' ' : static_cast<wchar_t>(code);
        utf8.remove_prefix(good ? static_cast<std::size_t>(g_unichar_to_utf8(code, nullptr)) : 1);
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
