/// HTTP GET with limits a person can live with.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace dinmala {

struct FetchLimits {
    std::chrono::milliseconds connect{3000};
    std::chrono::milliseconds whole{10000};  ///< looking up the name and redirects included
    std::size_t body = 1 << 16;              ///< bytes; a longer body is a failure
    long redirects = 5;
};

/// Fetches an address, blocking. HTTP only, also where a redirect leads.
///
/// @return the whole body, whatever the status; nothing when the fetch fails or
///         the body is empty, cut short or too long
[[nodiscard]] std::optional<std::string> httpGet(const std::string& url, const FetchLimits& limits = {});

}  // namespace dinmala
