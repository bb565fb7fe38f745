#include "desktop/StateFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>

#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

int addLine(const StateFile& file) {
    return file.change([](const std::string& text) { return text + "x\n"; });
}

TEST(StateFile, KeepsWhatSeveralProgramsAdd) {
    const TemporaryFolder folder;
    const StateFile file{folder.path("a/b/state")};
    std::array<pid_t, 4> programs{};
    for (pid_t& program : programs) {
        if ((program = fork()) != 0) continue;
        int error = 0;
        for (int line = 0; line < 50; ++line, usleep(2000)) error |= addLine(file);
        _exit(error != 0 ? 1 : 0);
    }
    for (const pid_t program : programs) {  // and no other child, of which an earlier test may have left one
        int status = -1;
        EXPECT_EQ(waitpid(program, &status, 0), program);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(folder.read("a/b/state").size(), 4u * 50 * 2);
    struct stat found {};
    ASSERT_EQ(stat(file.path().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777u, 0600u);
}

// One that was stopped while it had the file must not stop the others.
TEST(StateFile, DoesNotWaitForOneThatHasStopped) {
    const TemporaryFolder folder;
    const StateFile file{folder.path("state"), std::chrono::milliseconds{50}};
    const int held = open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    bool asked = false;
    EXPECT_EQ(file.change([&](const std::string&) {
        asked = true;
        return std::optional<std::string>{"new"};
    }),
              EWOULDBLOCK);
    EXPECT_TRUE(asked);
    close(held);
    EXPECT_EQ(addLine(file), 0);
    EXPECT_EQ(folder.read("state"), "x\n");
}

// Nothing of a file that cannot be read is replaced; whoever asks goes on, and hears why.
TEST(StateFile, LeavesWhatItCannotRead) {
    const TemporaryFolder folder;
    bool asked = false;
    const auto change = [&](const std::string& text) {
        asked = text.empty();
        return std::optional<std::string>{"new"};
    };
    folder.write("big", std::string(300'000, 'x'));
    EXPECT_EQ(StateFile{folder.path("big")}.change(change), EFBIG);
    EXPECT_TRUE(asked);
    EXPECT_EQ(folder.read("big").size(), 300'000u);
    EXPECT_NE(StateFile{folder.path("big/under/a/file")}.change(change), 0);
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_NE(StateFile{folder.path("pipe")}.change(change), 0);
    EXPECT_EQ(StateFile{folder.path("none")}.change([](const std::string&) { return std::nullopt; }), 0);
    EXPECT_FALSE(folder.has("none"));
}

}  // namespace
}  // namespace dinmala
