/// HTTP GET by a helper program that ends with the fetch.
#pragma once

#include <optional>
#include <string>

namespace dinmala {

/// As httpGet(), run by the program dinmala-fetch. The HTTP library and the forty
/// others that it brings would double the memory and the start of a program that
/// fetches once; the helper takes them along when it ends.
///
/// @param helper the path of dinmala-fetch
/// @return nothing also when the helper cannot be run
[[nodiscard]] std::optional<std::string> httpGetByChild(const std::string& helper, const std::string& url);

}  // namespace dinmala
