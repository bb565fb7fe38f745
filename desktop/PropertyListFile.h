/// Property lists, in XML and in binary form.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "desktop/Bundle.h"

namespace dinmala {

/// Reads a property list of at most 64 KiB. Nothing for a file that is absent,
/// longer or malformed, or whose root is no dictionary.
[[nodiscard]] std::optional<PropertyList> readPropertyList(const std::string& path);

/// The same for a text at hand.
[[nodiscard]] std::optional<PropertyList> parsePropertyList(std::string_view text);

}  // namespace dinmala
