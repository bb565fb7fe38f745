/// Lines of columns that stand straight in Devanagari.
#pragma once

#include <string>
#include <string_view>

namespace dinmala::cal {

/// The columns that a UTF-8 text takes, by wcwidth(); LC_CTYPE must be UTF-8.
[[nodiscard]] int columnsOf(std::string_view text);

/// A line put together from texts at columns.
///
/// Terminals do not agree on the width of vowel signs and conjuncts. On a terminal
/// what follows such a text is placed by its column, whatever the text took;
/// elsewhere blanks fill up what wcwidth() leaves.
class Line {
public:
    explicit Line(bool terminal) : terminal_(terminal) {}

    /// Puts a text at a column, 0 the first; columns only ever grow. `style` is
    /// the number of a colour or a text attribute ("1", "2;31"); "" for none.
    void put(int column, std::string_view text, std::string_view style = {});

    /// The line without the blanks at its end, and with its newline.
    [[nodiscard]] std::string take();

private:
    bool terminal_;
    bool uncertain_ = false;  // the cursor may not stand at at_
    int at_ = 0;
    std::string text_;
};

}  // namespace dinmala::cal
