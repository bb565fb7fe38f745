/// Years as files: written out, and checked before they are put into a folder.
#pragma once

#include <string>

#include "almanac/Edition.h"
#include "base/Result.h"

namespace dinmala::cal {

/// What is right with a year's file, a sentence for people, or what is wrong with it: one that cannot be read, breaks
/// the form, or would not fit into the calendar with the published years of `edition`. `path` "-" is standard input.
[[nodiscard]] Result<std::string> checkedYear(const std::string& path, const Edition& edition);

/// "FILE:LINE: why", without the line where the file as a whole is wrong; fit for a terminal.
[[nodiscard]] std::string refusal(const std::string& path, const TextError& error);

}  // namespace dinmala::cal
