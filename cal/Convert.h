/// Conversion of one date and of a stream of lines.
#pragma once

#include "agenda/ReadDay.h"
#include "cal/Settings.h"

namespace dinmala::cal {

/// Converts the lines of one file descriptor, a date each, to another, in
/// memory that does not grow with the stream. What has been read is converted
/// and written before more is waited for.
///
/// A line that does not convert, or of more than 4096 bytes, is told on standard error with its
/// number and leaves an empty line, so that the lines stay beside those they came from; as
/// JSON the stream is one list, and such a line an object with an "error".
/// @return 0, or 1 when a line did not convert, or when reading or writing failed
[[nodiscard]] int convertStream(const BsCalendar& calendar, const Settings& settings, int from, int to);

/// Appends the day in the other calendar than the one in which it was told, or its JSON.
void appendConverted(std::string& out, const FoundDay& day, const Settings& settings);

}  // namespace dinmala::cal
