// dinmala-cal as a whole process: from start to exit, and a stream of a million
// lines with the memory that it takes. usage: cal_bench PROGRAM
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

struct Run {
    double seconds;
    long kilobytes;  // the most that the process held
};

Run run(std::vector<const char*> arguments, const char* input) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, input, O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    arguments.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = -1;
    rusage usage{};
    if (posix_spawn(&child, arguments[0], &actions, nullptr, const_cast<char**>(arguments.data()), environ) == 0) {
        wait4(child, &status, 0, &usage);
    }
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        std::fprintf(stderr, "%s does not run\n", arguments[0]);
        std::exit(1);
    }
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), usage.ru_maxrss};
}

double median(const std::vector<const char*>& arguments) {
    std::vector<double> times(101);
    for (double& time : times) time = run(arguments, "/dev/null").seconds;
    std::nth_element(times.begin(), times.begin() + 50, times.end());
    return times[50];
}

}  // namespace

int main(int argc, char** argv) {
    const char* program = argc > 1 ? argv[1] : "build/release/cal/dinmala-cal";
    std::printf("month, start to exit     %10.3f ms (target: at most 10 ms; /bin/true takes %.3f ms)\n",
                median({program}) * 1e3, median({"/bin/true"}) * 1e3);

    std::array<char, 32> path{"/tmp/cal_bench.XXXXXX"};
    std::FILE* file = fdopen(mkstemp(path.data()), "w");  // not kept in memory: a child starts with our size
    constexpr int kLines = 1'000'000;
    for (int i = 0; i < kLines; ++i) {
        std::fprintf(file, "%d-%02d-%02d\n", 1943 + i % 100, i % 12 + 1, i % 28 + 1);
    }
    const bool written = std::fclose(file) == 0;
    double best = 1e9;
    long kilobytes = 0;
    for (int i = 0; written && i < 5; ++i) {
        const Run stream = run({program, "convert"}, path.data());
        best = std::min(best, stream.seconds);
        kilobytes = std::max(kilobytes, stream.kilobytes);
    }
    const long alone = run({program, "convert"}, "/dev/null").kilobytes;
    std::printf("a million lines          %10.3f million lines/s (target: at least 3)\n", kLines / best / 1e6);
    std::printf("memory for them          %10ld KB (no line: %ld KB)\n", kilobytes, alone);
    unlink(path.data());
    return written ? 0 : 1;
}
