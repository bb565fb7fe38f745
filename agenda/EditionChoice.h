/// Which edition is shown: the one that is asked for, else the preferred one, else the current one.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "almanac/Edition.h"

namespace dinmala {

inline constexpr const char* kEditionVariable = "DINMALA_EDITION";

/// The word that asks for an edition: the option's, which may be an empty one, else the variable's where that is not
/// empty. Whether it names one is for the caller to say.
[[nodiscard]] inline std::optional<std::string> askedEditionWord(std::optional<std::string> option = {}) {
    const char* const variable = std::getenv(kEditionVariable);
    if (!option && variable != nullptr && *variable != '\0') option = variable;
    return option;
}

/// @param preferred the word that is kept under the preferences' key; one that names no edition counts as not there
[[nodiscard]] inline EditionId chosenEdition(std::optional<EditionId> asked, std::string_view preferred) {
    return asked ? *asked : editionNamed(preferred).value_or(EditionId::current);
}

}  // namespace dinmala
