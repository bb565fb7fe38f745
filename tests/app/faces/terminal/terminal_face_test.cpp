// The terminal face as a person meets it: a child process with a terminal of its
// own, seen and operated from the other side.
#include "app/faces/terminal/TerminalFace.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <array>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "tests/app/faces/terminal/FakeMenu.h"

namespace dinmala {
namespace {

constexpr const char* kFaceArgument = "--face";
constexpr int kPatience = 10'000;  // milliseconds; only a fault takes that long

class TerminalFaceInATerminal : public testing::Test {
protected:
    void SetUp() override {
        const winsize size{24, 80, 0, 0};
        ASSERT_EQ(openpty(&master, &slave, nullptr, nullptr, &size), 0);
        ASSERT_EQ(tcgetattr(slave, &before), 0);
        child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            close(master);
            login_tty(slave);
            setenv("TERM", "xterm", 1);
            execl("/proc/self/exe", "terminal_tests", kFaceArgument, nullptr);
            _exit(127);
        }
    }
    void TearDown() override {
        if (child > 0) kill(child, SIGKILL), waitpid(child, nullptr, 0);
        if (master >= 0) close(master);
        if (slave >= 0) close(slave);
    }

    /// Reads until the text has come; false when it does not.
    bool sees(std::string_view text) {
        std::array<char, 4096> buffer;
        pollfd readable{master, POLLIN, 0};
        while (output.find(text) == std::string::npos) {
            if (poll(&readable, 1, kPatience) != 1) return false;
            const ssize_t count = read(master, buffer.data(), buffer.size());
            if (count <= 0) return false;
            output.append(buffer.data(), static_cast<std::size_t>(count));
        }
        output.erase(0, output.find(text) + text.size());
        return true;
    }
    void type(std::string_view keys) {
        ASSERT_EQ(write(master, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    /// The child's exit status, -1 when it does not end.
    int ends() {
        for (int waited = 0; waited < kPatience; waited += 5) {
            int status = 0;
            if (waitpid(child, &status, WNOHANG) == child) {
                child = -1;
                return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
            }
            usleep(5000);
        }
        return -1;
    }
    void expectTerminalRestored() {
        termios after{};
        ASSERT_EQ(tcgetattr(slave, &after), 0);
        EXPECT_EQ(after.c_lflag, before.c_lflag);
        EXPECT_EQ(after.c_iflag, before.c_iflag);
        EXPECT_TRUE(sees("\x1b[?1049l"));  // the other screen
    }

    int master = -1;
    int slave = -1;
    pid_t child = -1;
    termios before{};
    std::string output;
};

TEST_F(TerminalFaceInATerminal, AKeyFlipsAToggleAndQuittingRestores) {
    ASSERT_TRUE(sees(" बैशाख ७"));
    ASSERT_TRUE(sees("1 [ ] Year"));
    ASSERT_TRUE(sees("shown"));
    for (const auto& [keys, shown] : {std::pair{"1", "1 [x] Year"},
                                      {"j ", "cannot keep it"},
                                      {"c", "मंसिर २०८३"},
                                      {"u", "Upcoming"},
                                      {"\x1b", "मंसिर २०८३"},
                                      {"d", "western is kept"},
                                      {"c", "1 [x] Year"}}) {
        type(keys);
        ASSERT_TRUE(sees(shown)) << keys;
    }
    type("q");
    EXPECT_EQ(ends(), 0);
    expectTerminalRestored();
    EXPECT_TRUE(sees("cannot keep it\r\n"));  // once more, where it stays
}

TEST_F(TerminalFaceInATerminal, FollowsTheSizeAndEndsAtASignal) {
    ASSERT_TRUE(sees("q quit"));
    const winsize small{5, 30, 0, 0};
    ASSERT_EQ(ioctl(master, TIOCSWINSZ, &small), 0);
    ASSERT_TRUE(sees(">↓1 [ ] Year"));
    kill(child, SIGTERM);
    EXPECT_EQ(ends(), 0);
    expectTerminalRestored();
}

TEST_F(TerminalFaceInATerminal, AHangupEndsIt) {
    ASSERT_TRUE(sees("q quit"));
    close(std::exchange(slave, -1));
    close(std::exchange(master, -1));
    EXPECT_EQ(ends(), 0);
}

TEST(TerminalFaceWithoutATerminal, IsRefusedInWords) {
    const int input = dup(STDIN_FILENO);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    dup2(ends[0], STDIN_FILENO);
    EXPECT_THROW(TerminalFace([] {}, {}), std::runtime_error);
    dup2(input, STDIN_FILENO);
    close(input);
    close(ends[0]);
    close(ends[1]);
}

/// A menu with two toggles, the second of which complains.
void runFace() {
    std::setlocale(LC_ALL, "C.UTF-8");
    FakeMenu fake;
    fake.addToggle("Year");
    fake.add("Complain", MenuItem::Kind::toggle).setAction([] { std::fputs("cannot keep it\n", stderr); });
    const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop{g_main_loop_new(nullptr, FALSE),
                                                                        &g_main_loop_unref};
    {
        const auto shown = []() -> TerminalFace::Shown {
            return {currentEdition(), std::chrono::sys_days{std::chrono::days{20780}}, {}};
        };
        TerminalFace face(
            [&] { g_main_loop_quit(loop.get()); },
            {shown, [](PageLook look) { std::fprintf(stderr, "%s is kept\n", keptWord(look.digits).data()); }});
        face.setOutlets(fake.outlets);
        const auto item = face.statusItemWithLength(-1.0);
        item->setTitle(" बैशाख ७");
        face.whenShown([&] { item->setTitle("shown"); });
        g_main_loop_run(loop.get());
    }
}

}  // namespace
}  // namespace dinmala

// A child starts this program anew: a process that was only forked has no thread
// left to tell its main loop of signals.
int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], dinmala::kFaceArgument) == 0) {
        dinmala::runFace();
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
