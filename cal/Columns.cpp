#include "cal/Columns.h"

#include <algorithm>
#include <cwchar>
#include <utility>

namespace dinmala::cal {

namespace {

/// Devanagari and its vowel signs start with E0 A4 or E0 A5; of these only digits
/// (E0 A5 A6 to AF) take one column everywhere.
bool mayVaryInWidth(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80) continue;
        const bool digit = text.substr(i).starts_with("\xE0\xA5") && i + 2 < text.size() &&
                           static_cast<unsigned char>(text[i + 2]) >= 0xA6 &&
                           static_cast<unsigned char>(text[i + 2]) <= 0xAF;
        if (!digit) return true;
        i += 2;
    }
    return false;
}

}  // namespace

int columnsOf(std::string_view text) {
    std::mbstate_t state{};
    int columns = 0;
    while (!text.empty()) {
        wchar_t c = 0;
        const std::size_t length = std::mbrtowc(&c, text.data(), text.size(), &state);
        if (length == 0 || length > text.size()) return columns + static_cast<int>(text.size());
        columns += std::max(wcwidth(c), 0);
        text.remove_prefix(length);
    }
    return columns;
}

void Line::put(int column, std::string_view text, std::string_view style) {
    if (at_ < column) {
        if (uncertain_) {
            text_ += "\033[" + std::to_string(column + 1) + "G";
        } else {
            text_.append(static_cast<std::size_t>(column - at_), ' ');
        }
        at_ = column;
        uncertain_ = false;
    }
    if (!style.empty()) text_.append("\033[").append(style).append("m");
    text_ += text;
    if (!style.empty()) text_ += "\033[0m";
    at_ += columnsOf(text);
    uncertain_ = uncertain_ || (terminal_ && mayVaryInWidth(text));
}

std::string Line::take() {
    text_.erase(std::min(text_.find_last_not_of(' ') + 1, text_.size()));
    text_ += '\n';
    at_ = 0;
    uncertain_ = false;
    return std::exchange(text_, {});
}

}  // namespace dinmala::cal
