#include <giomm.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>

#include "app/platform/linux/ChildFetch.h"
#include "app/platform/linux/CurlFetch.h"
#include "tests/app/linux/LoopbackServer.h"

namespace dinmala {
namespace {

class HttpGet : public testing::Test {
protected:
    HttpGet() { setenv("no_proxy", "*", 1); }

    static std::string ok(const std::string& body) { return "HTTP/1.1 200 OK\r\n\r\n" + body; }
    static std::string redirect(const std::string& to) {
        return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\n\r\n";
    }
    static std::optional<std::string> answered(const std::string& bytes) {
        const LoopbackServer server([&](const std::string&) { return bytes; });
        return httpGet(server.url());
    }
};

TEST_F(HttpGet, GivesTheWholeBodyOfAnyStatus) {
    EXPECT_EQ(answered(ok("{\"update\":1}")), "{\"update\":1}");
    EXPECT_EQ(answered(ok(std::string("a\0b", 3))), std::string("a\0b", 3));
    EXPECT_EQ(answered("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone"), "gone");
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n"), "abc");
    EXPECT_EQ(answered(ok(std::string(65536, 'x'))), std::string(65536, 'x'));
}

TEST_F(HttpGet, GivesNothingWhenTheFetchFails) {
    EXPECT_EQ(answered(ok("")), std::nullopt);
    EXPECT_EQ(answered(""), std::nullopt);
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\ncut short"), std::nullopt);
    EXPECT_EQ(answered(ok(std::string(65537, 'x'))), std::nullopt);
    EXPECT_EQ(answered("no HTTP at all\r\n\r\n"), std::nullopt);
    EXPECT_EQ(httpGet("http://127.0.0.1:1/"), std::nullopt);
    EXPECT_EQ(httpGet("file:///etc/hostname"), std::nullopt);
    EXPECT_EQ(httpGet("not an address"), std::nullopt);
    EXPECT_EQ(httpGet(""), std::nullopt);
}

TEST_F(HttpGet, AsksForThePathWithNoHeadersOfItsOwn) {
    LoopbackServer server([](const std::string&) { return ok("x"); });
    EXPECT_EQ(httpGet(server.url("/v/2.0/b/7?q=1")), "x");
    ASSERT_EQ(server.requests.size(), 1U);
    EXPECT_EQ(server.requests[0],
              "GET /v/2.0/b/7?q=1 HTTP/1.1\r\nHost: " + server.url("").substr(7) + "\r\nAccept: */*\r\n\r\n");
}

TEST_F(HttpGet, FollowsFiveRedirectsWithinHttp) {
    LoopbackServer server([](const std::string& request) {
        const char step = request[5];  // "GET /3 ..."
        return step == '0' ? ok("end") : redirect(std::string("/") + static_cast<char>(step - 1));
    });
    EXPECT_EQ(httpGet(server.url("/5")), "end");
    EXPECT_EQ(httpGet(server.url("/6")), std::nullopt);
    EXPECT_EQ(answered(redirect("file:///etc/hostname")), std::nullopt);
    EXPECT_EQ(answered(redirect("ftp://127.0.0.1/")), std::nullopt);
}

TEST_F(HttpGet, GivesUpOnASilentServer) {
    const LoopbackServer server([](const std::string&) { return LoopbackServer::kSilence; });
    FetchLimits limits;
    limits.whole = std::chrono::milliseconds(200);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(httpGet(server.url(), limits), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(HttpGet, IsTheSameByTheHelper) {
    Gio::init();
    const LoopbackServer server([](const std::string& request) {
        return request.starts_with("GET /v ") ? ok(std::string("a\0b", 3)) : std::string{};
    });
    EXPECT_EQ(httpGetByChild(FETCH_HELPER, server.url("/v")), std::string("a\0b", 3));
    EXPECT_EQ(httpGetByChild(FETCH_HELPER, server.url("/")), std::nullopt);
    EXPECT_EQ(httpGetByChild("/no/such/helper", server.url("/v")), std::nullopt);
}

}  // namespace
}  // namespace dinmala
