/// What a line of the lines face is like: the title alone, or an object of a bar's own protocol.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "agenda/Summary.h"

namespace dinmala {

enum class LineForm {
    plain,   ///< the title, byte for byte
    waybar,  ///< a JSON object: text and tooltip as Pango markup, and the list "class"
    i3bar,   ///< the protocol of i3bar and swaybar: a header, then an array that never ends
};

/// Of $DINMALA_LINES: "" is plain, "json" waybar, "i3bar" i3bar; nothing for another word.
[[nodiscard]] std::optional<LineForm> lineFormNamed(std::string_view word);

/// What goes before the first line.
[[nodiscard]] std::string lineHeader(LineForm form);

/// One line, with its newline. `day` counts for nothing in a plain one. Line breaks in the title are blanks, bytes that
/// are not UTF-8 are replaced in JSON.
[[nodiscard]] std::string lineText(LineForm form, const std::string& title, const DaySummary& day);

}  // namespace dinmala
