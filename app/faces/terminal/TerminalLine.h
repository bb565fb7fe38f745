/// What stands between the terminal and what is shown on it: lines out, keys in. Neither side knows the other.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace dinmala {

struct TerminalLine {
    enum class Look { plain, title, quiet, selected };
    /// A part of the text that looks otherwise than the line.
    struct Span {
        std::size_t begin, end;  ///< characters
        Look look;
    };

    std::wstring text;
    Look look = Look::plain;
    std::vector<Span> spans = {};  ///< in order, none over another
};

enum class TerminalKey {
    up,
    down,
    left,
    right,
    pageUp,
    pageDown,
    home,
    end,
    choose,
    back,
    yearBack,
    yearForward,
    calendar,
    upcoming,
    digits,
    names,
};

}  // namespace dinmala
