/// What the command tells on standard error.
#pragma once

#include <string>

#include "agenda/Sentences.h"

namespace dinmala::cal {

/// Writes "dinmala-cal: MESSAGE" as a line. What the message holds from outside went through shownText() or
/// withoutControls().
void complain(const std::string& message);

}  // namespace dinmala::cal
