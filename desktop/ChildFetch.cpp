#include "desktop/ChildFetch.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace dinmala {

namespace {

using namespace std::chrono;

/// Starts the helper, its output in a pipe.
/// @return its process, or -1
pid_t start(const std::string& helper, const std::string& url, int output) {
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0) return -1;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::string program = helper;
    std::string address = url;
    const std::array<char*, 3> arguments{program.data(), address.data(), nullptr};
    pid_t child = -1;
    const int error = posix_spawn(&child, helper.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : -1;
}

/// Reads until the end.
/// @return nothing when it does not come in time, or not within so many bytes
std::optional<std::string> readAll(int input, steady_clock::time_point end, std::size_t longest) {
    std::string text;
    std::array<char, 4096> buffer{};
    while (true) {
        const auto left = ceil<milliseconds>(end - steady_clock::now()).count();
        pollfd state{input, POLLIN, 0};
        if (left <= 0) return std::nullopt;
        const int ready = poll(&state, 1, static_cast<int>(left));
        if (ready < 0 && errno != EINTR) return std::nullopt;
        if (ready <= 0) continue;
        const ssize_t got = read(input, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        if (got == 0) return text;
        text.append(buffer.data(), static_cast<std::size_t>(got));
        if (text.size() > longest) return std::nullopt;
    }
}

}  // namespace

std::optional<std::string> httpGetByChild(const std::string& helper, const std::string& url, milliseconds deadline,
                                          std::size_t longest) {
    const auto end = steady_clock::now() + deadline;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
    const pid_t child = start(helper, url, ends[1]);
    close(ends[1]);
    std::optional<std::string> body;
    if (child > 0) body = readAll(ends[0], end, longest);
    close(ends[0]);
    if (child <= 0) return std::nullopt;

    // It has closed its output: what is left is to end, for which it gets what is left of the time.
    int status = 0;
    pid_t ended = 0;
    while (body && (ended = waitpid(child, &status, WNOHANG)) == 0 && steady_clock::now() < end) usleep(1000);
    if (ended != child) {
        kill(child, SIGKILL);
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        return std::nullopt;
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || body->empty()) return std::nullopt;
    return body;
}

}  // namespace dinmala
