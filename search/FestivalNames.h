/// What festivals are called by those who type.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace dinmala {

/// The events that a name stands for, in both editions' ids: "tihar" for several, "भाइ टीका" for one. Empty for what is
/// not clearly a festival's name.
///
/// Usual spellings count as one: "dasain" and "dashain", "दसैं" and "दशैँ", with or without blanks. Of a name of
/// five letters or more the last two may still be missing, where it is one festival's alone.
[[nodiscard]] std::vector<std::uint16_t> festivalNamed(std::string_view name);

}  // namespace dinmala
