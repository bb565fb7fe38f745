#include "desktop/CurlFetch.h"

#include <curl/curl.h>
#include <strings.h>

#include <memory>

namespace dinmala {
namespace {

using namespace std::chrono;

/// Bytes that a peer may send, and what is kept of them.
struct Taken {
    std::string text;
    std::size_t length = 0;
    std::size_t limit;
    bool isKept;
};

/// libcurl's callback for a body and for headers: taking less than was offered ends the fetch.
std::size_t take(const char* data, std::size_t size, std::size_t count, void* target) {
    Taken& taken = *static_cast<Taken*>(target);
    taken.length += size * count;
    if (taken.length > taken.limit) return 0;
    if (taken.isKept) taken.text.append(data, size * count);
    return size * count;
}

using Url = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

Url parsed(const std::string& address) {
    Url url(curl_url(), &curl_url_cleanup);
    if (url && curl_url_set(url.get(), CURLUPART_URL, address.c_str(), 0) != CURLUE_OK) url.reset();
    return url;
}

std::string part(const Url& url, CURLUPart which) {
    char* text = nullptr;
    if (curl_url_get(url.get(), which, &text, CURLU_DEFAULT_PORT) != CURLUE_OK) return {};
    const std::unique_ptr<char, decltype(&curl_free)> owned(text, &curl_free);
    return text;
}

/// One exchange, without following.
/// @param next where a redirect leads; empty for any other answer
std::optional<std::string> exchange(CURL* curl, const std::string& url, const FetchLimits& limits, milliseconds left,
                                    std::string& next) {
    Taken body{{}, 0, limits.body, true};
    Taken headers{{}, 0, limits.headers, false};
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
#if LIBCURL_VERSION_NUM >= 0x075500
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
#else
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS, CURLPROTO_HTTP | CURLPROTO_HTTPS);
#endif
#if LIBCURL_VERSION_NUM >= 0x075700
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);  // a name server that is silent is not waited for
#endif
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connect.count()));
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(left.count()));
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &take);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, &take);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &headers);
    if (curl_easy_perform(curl) != CURLE_OK) return std::nullopt;
    char* redirect = nullptr;
    curl_easy_getinfo(curl, CURLINFO_REDIRECT_URL, &redirect);
    next = redirect != nullptr ? redirect : "";
    return std::move(body.text);
}

}  // namespace

bool mayFollow(const std::string& from, const std::string& to) {
    const Url here = parsed(from);
    const Url there = parsed(to);
    if (!here || !there) return false;
    if (strcasecmp(part(here, CURLUPART_HOST).c_str(), part(there, CURLUPART_HOST).c_str()) != 0) return false;
    const std::string scheme = part(there, CURLUPART_SCHEME);
    const std::string port = part(there, CURLUPART_PORT);
    const bool isSamePort = port == part(here, CURLUPART_PORT);
    if (scheme == "https") return isSamePort || port == "443";
    return scheme == "http" && part(here, CURLUPART_SCHEME) == "http" && isSamePort;
}

std::optional<std::string> httpGet(const std::string& url, const FetchLimits& limits) {
    // Once, and only when there is something to fetch.
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    if (!ready) return std::nullopt;
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(), &curl_easy_cleanup);
    if (!handle) return std::nullopt;

    const auto end = steady_clock::now() + limits.whole;
    std::string address = url;
    for (long redirects = 0; redirects <= limits.redirects; ++redirects) {
        const auto left = ceil<milliseconds>(end - steady_clock::now());
        if (left <= milliseconds::zero()) return std::nullopt;
        std::string next;
        std::optional<std::string> body = exchange(handle.get(), address, limits, left, next);
        if (!body) return std::nullopt;
        if (next.empty()) return body->empty() ? std::nullopt : std::move(body);
        if (!mayFollow(address, next)) return std::nullopt;
        address = std::move(next);
    }
    return std::nullopt;
}

}  // namespace dinmala
