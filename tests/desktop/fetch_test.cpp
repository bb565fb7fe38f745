#include <fcntl.h>
#include <glib.h>
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "desktop/ChildFetch.h"
#include "desktop/Confinement.h"
#include "desktop/CurlFetch.h"
#include "desktop/OpenUrl.h"
#include "tests/desktop/LoopbackServer.h"
#include "tests/support/TemporaryFolder.h"

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

    // Not to another server, be it on the same machine or in the same room.
    LoopbackServer other([](const std::string&) { return ok("elsewhere"); });
    EXPECT_EQ(answered(redirect(other.url())), std::nullopt);
    EXPECT_TRUE(other.requests.empty());
    const std::string from = "http://site.example/a";
    for (const char* to : {"http://site.example/b", "http://SITE.example:80/", "https://site.example/a"}) {
        EXPECT_TRUE(mayFollow(from, to)) << to;
    }
    for (const char* to : {"http://www.site.example/", "http://127.0.0.1/", "http://site.example:8080/",
                           "https://site.example:8443/", "http://site.example@evil.example/", "ftp://site.example/",
                           "https://site.example.evil.example/", "site.example", ""}) {
        EXPECT_FALSE(mayFollow(from, to)) << to;
    }
    EXPECT_FALSE(mayFollow("https://site.example/", "http://site.example/"));
    EXPECT_TRUE(mayFollow("http://127.0.0.1:8099/", "https://127.0.0.1:8099/"));
}

// Endless headers, endless trailers: no limit of the body's holds them.
TEST_F(HttpGet, TakesNoMoreHeadersThanSomeOnesWouldSend) {
    std::string headers;
    for (int i = 0; i < 3000; ++i) headers += "X-" + std::to_string(i) + ": " + std::string(30, 'x') + "\r\n";
    EXPECT_EQ(answered("HTTP/1.1 200 OK\r\n" + headers + "\r\nbody"), std::nullopt);
    const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n0\r\n";
    EXPECT_EQ(answered(chunked + "X-1: y\r\n\r\n"), "ab");
    EXPECT_EQ(answered(chunked + headers + "\r\n"), std::nullopt);
}

// Each of the two limits: of a server that says nothing, and of one that does not answer the door.
TEST_F(HttpGet, GivesUpOnASilentServer) {
    const auto start = std::chrono::steady_clock::now();
    const LoopbackServer server([](const std::string&) { return LoopbackServer::kSilence; });
    FetchLimits limits;
    limits.whole = std::chrono::milliseconds(200);
    EXPECT_EQ(httpGet(server.url(), limits), std::nullopt);
    std::vector<int> visitors;
    visitors.reserve(2 * LoopbackServer::kMostWaiting);
    for (int i = 0; i < 2 * LoopbackServer::kMostWaiting; ++i) visitors.push_back(server.visit());
    limits = {};
    limits.connect = std::chrono::milliseconds(300);
    EXPECT_EQ(httpGet(server.url(), limits), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    for (const int visitor : visitors) close(visitor);
}

// Whatever the helper does, the program goes on.
TEST_F(HttpGet, AHelperThatMisbehavesIsKilled) {
    const TemporaryFolder folder;
    for (const char* deed : {"kill -STOP $$", "sleep 60", "exec cat /dev/zero", "exec >&-; sleep 60", "kill -SEGV $$",
                             "head -c 100000 /dev/zero", "echo body; exit 1"}) {
        const std::string helper = folder.write("helper", std::string("#!/bin/sh\n") + deed + "\n");
        std::filesystem::permissions(helper, std::filesystem::perms(0755));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(httpGetByChild(helper, "http://site.example/", std::chrono::milliseconds(500)), std::nullopt) << deed;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << deed;
    }
}

// What a stranger could make of the helper: each deed is tried, and must fail.
TEST_F(HttpGet, TheHelperCanDoLittle) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "mine");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        confineProcess();
        int done = prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 1 ? 0 : 1;
        if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) > 0) {
            if (open(file.c_str(), O_WRONLY) >= 0) done |= 2;
            if (open(folder.path("new").c_str(), O_CREAT | O_WRONLY, 0600) >= 0) done |= 4;
            if (unlink(file.c_str()) == 0) done |= 8;
            execl("/bin/true", "true", nullptr);  // exit 0 would look right; so 16 stands for "not started"
            done |= 16;
        } else {
            done |= 16;
        }
        if (open(file.c_str(), O_RDONLY) < 0) done |= 32;  // what it needs is left
        rlimit time{};
        if (getrlimit(RLIMIT_CPU, &time) != 0 || time.rlim_max > 10) done |= 128;
#ifndef __SANITIZE_ADDRESS__
        if (mmap(nullptr, std::size_t{1} << 30, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED)
            done |= 64;
#endif
        _exit(done);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 16);
    EXPECT_EQ(folder.read("file"), "mine");
}

// A link must reach the program that the user has chosen.
TEST(OpenUrl, StartsTheProgramForTheAddress) {
    const TemporaryFolder folder;
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    setenv("XDG_CURRENT_DESKTOP", "", 1);
    if (g_get_user_data_dir() != folder.path()) GTEST_SKIP() << "the folders are read once a process";
    const std::string program = folder.write("browser", "#!/bin/sh\nprintf %s \"$1\" > " + folder.path("opened"));
    std::filesystem::permissions(program, std::filesystem::perms(0755));
    folder.write("applications/browser.desktop", "[Desktop Entry]\nType=Application\nName=b\nExec=" + program +
                                                     " %u\nMimeType=x-scheme-handler/http;\n");
    folder.write("mimeapps.list", "[Default Applications]\nx-scheme-handler/http=browser.desktop\n");
    std::vector<std::string> told;
    const auto tell = [&](const std::string& message) { told.push_back(message); };
    openUrl("http://site.example/?ref=a&b=c", tell);
    for (int i = 0; i < 2000 && folder.read("opened").empty(); ++i) g_usleep(5000);
    EXPECT_EQ(folder.read("opened"), "http://site.example/?ref=a&b=c");
    EXPECT_TRUE(told.empty());
    openUrl("no-such-scheme:x", tell);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(HttpGet, IsTheSameByTheHelper) {
    const LoopbackServer server([](const std::string& request) {
        return request.starts_with("GET /v ") ? ok(std::string("a\0b", 3)) : std::string{};
    });
    EXPECT_EQ(httpGetByChild(FETCH_HELPER, server.url("/v")), std::string("a\0b", 3));
    EXPECT_EQ(httpGetByChild(FETCH_HELPER, server.url("/")), std::nullopt);
    EXPECT_EQ(httpGetByChild("/no/such/helper", server.url("/v")), std::nullopt);
}

}  // namespace
}  // namespace dinmala
