/// Text in the columns of a terminal: decoding, measuring and breaking lines.
///
/// Widths come from wcwidth(), so LC_CTYPE must be a UTF-8 locale.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dinmala {

/// Decodes UTF-8. A byte that is not UTF-8 becomes U+FFFD and a control
/// character a space: neither may reach a terminal.
[[nodiscard]] std::wstring decodeForTerminal(std::string_view utf8);

/// The columns that a text takes.
[[nodiscard]] int columnsOf(std::wstring_view text);

/// Breaks a text into lines of at most `width` columns, at blanks where it can;
/// the blanks at a break go. A word wider than a line is broken before a letter,
/// not between a letter and its vowel sign as long as both fit. Leading blanks
/// stay. At least one line; nothing is left out but a character that is itself
/// wider than `width`.
[[nodiscard]] std::vector<std::wstring> wrapText(std::wstring_view text, int width);

}  // namespace dinmala
