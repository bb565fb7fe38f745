#include "app/platform/linux/CurlFetch.h"

#include <curl/curl.h>

#include <memory>

namespace dinmala {
namespace {

struct Body {
    std::string text;
    std::size_t limit;
};

/// libcurl's write callback: taking less than was offered ends the fetch.
std::size_t take(const char* data, std::size_t, std::size_t length, void* target) {
    Body& body = *static_cast<Body*>(target);
    if (body.text.size() + length > body.limit) return 0;
    body.text.append(data, length);
    return length;
}

}  // namespace

std::optional<std::string> httpGet(const std::string& url, const FetchLimits& limits) {
    // Once, and only when there is something to fetch. No TLS is set up: it is never used.
    static const bool ready = curl_global_init(CURL_GLOBAL_NOTHING) == CURLE_OK;
    if (!ready) return std::nullopt;
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(), &curl_easy_cleanup);
    if (!handle) return std::nullopt;

    Body body{{}, limits.body};
    CURL* curl = handle.get();
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    // This holds where a redirect leads as well.
#if LIBCURL_VERSION_NUM >= 0x075500
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http");
#else
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS, CURLPROTO_HTTP);
#endif
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, limits.redirects);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connect.count()));
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(limits.whole.count()));
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &take);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    if (curl_easy_perform(curl) != CURLE_OK || body.text.empty()) return std::nullopt;
    return std::move(body.text);
}

}  // namespace dinmala
