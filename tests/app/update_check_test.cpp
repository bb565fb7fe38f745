#include <gtest/gtest.h>

#include "tests/support/FakePlatform.h"

namespace dinmala {
namespace {

TEST(UpdateAnswer, AnnouncesOnlyWhatReadsAsOne) {
    const auto announces = [](const std::string& value) { return announcesUpdate("{\"update\":" + value + "}"); };
    for (const char* value : {"1", "\"1\"", "true", "1.0", " 1 , \"other\" : 0 "})
        EXPECT_TRUE(announces(value)) << value;
    for (const char* value : {"0", "\"0\"", "null", "false", "2", "1.5", "-1", "\"1 \"", "\"01\"", "\"true\"", "[1]",
                              "{\"update\":1}", "\"\xff\"", "1e400", "1}x", ""}) {
        EXPECT_FALSE(announces(value)) << value;
    }
    for (const char* body : {R"({"Update":1})", "{}", "[]", R"([{"update":1}])", "1", "true", "\"1\"", "", " ",
                             R"({"update":1)", "{update:1}", "<html>404</html>", "\xff\xfe"}) {
        EXPECT_FALSE(announcesUpdate(body)) << body;
    }
    EXPECT_FALSE(announcesUpdate(std::string(100000, '[')));
    EXPECT_FALSE(announcesUpdate(R"({"update":)" + std::string(100000, '[') + std::string(100000, ']') + "}"));
}

class UpdateCheck : public testing::Test {
protected:
    bool check() {
        shell.restart();
        return shell.delegate->checkUpdate();
    }
    test::Shell shell;
};

TEST_F(UpdateCheck, AsksForVersionThenBuildAndShowsTheButtonWhereOneIsOut) {
    shell.answer = R"({"update":1})";
    EXPECT_TRUE(check());
    EXPECT_FALSE(shell.update.isHidden());
    EXPECT_EQ(shell.fetched, (std::vector<std::string>{"http://site.example/apps/mac/request/vcheck/v/2.0/b/7"}));
    for (const char* answer : {"", R"({"update":0})"}) {
        shell.update.setHidden(false);
        shell.answer = *answer != '\0' ? std::optional<std::string>{answer} : std::nullopt;
        EXPECT_FALSE(check());
        EXPECT_TRUE(shell.update.isHidden());
    }
}

// A property list may hold a version as a number.
TEST_F(UpdateCheck, AsksForAVersionOfAnyType) {
    shell.info["CFBundleShortVersionString"] = 1.5;
    shell.info["CFBundleVersion"] = std::int64_t{-12};
    check();
    shell.info["CFBundleShortVersionString"] = true;
    shell.info.erase("CFBundleVersion");
    check();
    EXPECT_EQ(shell.fetched, (std::vector<std::string>{"http://site.example/apps/mac/request/vcheck/v/1.5/b/-12",
                                                       "http://site.example/apps/mac/request/vcheck/v/1/b/"}));
}

TEST_F(UpdateCheck, FetchesNothingFromANameThatIsNoSite) {
    shell.answer = R"({"update":1})";
    for (const char* host : {"dinmala.invalid", ""}) {
        shell.info["DinmalaSiteHost"] = std::string{host};
        EXPECT_FALSE(check());
    }
    EXPECT_TRUE(shell.fetched.empty());
}

}  // namespace
}  // namespace dinmala
