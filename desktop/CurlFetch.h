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
    std::size_t headers = 1 << 16;           ///< bytes of all headers and trailers of an answer; more are a failure
    long redirects = 5;
};

/// Fetches an address, blocking. HTTP, or HTTPS with a certificate that the system trusts.
/// Redirects are followed where mayFollow() says so; others are a failure.
///
/// @return the whole body, whatever the status; nothing when the fetch fails or
///         the body is empty, cut short or too long
[[nodiscard]] std::optional<std::string> httpGet(const std::string& url, const FetchLimits& limits = {});

/// Whether a redirect from one address to another stays with the same host: by HTTP on the same
/// port, or by HTTPS on the same or the usual port. From HTTPS it never leads back to HTTP.
[[nodiscard]] bool mayFollow(const std::string& from, const std::string& to);

}  // namespace dinmala
