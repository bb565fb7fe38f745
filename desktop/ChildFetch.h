/// HTTP GET by a helper program that ends with the fetch.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace dinmala {

/// As httpGet(), run by the program dinmala-fetch. The HTTP library and the forty
/// others that it brings would double the memory and the start of a program that
/// fetches once; the helper takes them along when it ends.
///
/// @param helper   the path of dinmala-fetch
/// @param deadline a little more than the helper's own; whatever it does then, it is killed
/// @return nothing also when the helper cannot be run, does not end in time or
///         writes more than a body may have
[[nodiscard]] std::optional<std::string> httpGetByChild(
    const std::string& helper, const std::string& url,
    std::chrono::milliseconds deadline = std::chrono::milliseconds{11000}, std::size_t longest = 1 << 16);

}  // namespace dinmala
