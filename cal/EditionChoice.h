/// Which edition of the calendar the command answers from.
#pragma once

#include <optional>
#include <string>

#include "almanac/Edition.h"

namespace dinmala::cal {

/// The edition of `option` where --edition stands, else of $DINMALA_EDITION, else of the key `edition` in the
/// preferences that the panel program keeps, else the current one. A variable that is empty and a preference that
/// names no edition count as not there.
///
/// @return the error, a sentence for people, for a word of the option or the variable that names no edition
[[nodiscard]] Result<EditionId> chosenEdition(const std::optional<std::string>& option);

}  // namespace dinmala::cal
