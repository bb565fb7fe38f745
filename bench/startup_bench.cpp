// How long the program takes from its start to a registered item, and what it costs while nothing happens.
// usage: startup_bench PROGRAM [STARTS [IDLE_SECONDS [label|tile]]]
//
// It plays the panel on a session bus of its own: it reads the item and its menu as a panel does.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/app/linux/FakePanel.h"
#include "tests/app/linux/TemporaryFolder.h"

namespace {

using dinmala::FakePanel;
using dinmala::runFor;
using dinmala::runUntil;

pid_t start(const char* program) {
    pid_t pid = 0;
    std::string path = program;
    char* arguments[] = {path.data(), nullptr};
    if (posix_spawn(&pid, program, nullptr, nullptr, arguments, environ) != 0) return 0;
    return pid;
}

void stop(pid_t pid) {
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
}

void readAsPanelsDo(FakePanel& panel) {
    panel.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll", "('org.kde.StatusNotifierItem',)");
    panel.call("/MenuBar", "com.canonical.dbusmenu", "GetLayout", "(0, -1, @as [])");
}

struct Cost {
    long long cpuNanoseconds = 0;
    long long wakeUps = 0;
};

/// Of all the process's threads since its start.
Cost costOf(pid_t pid) {
    Cost cost;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task")) {
        long long nanoseconds = 0;
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        cost.cpuNanoseconds += nanoseconds;
        std::ifstream status(task.path() / "status");
        for (std::string word; status >> word;) {
            long long count = 0;
            if (word == "voluntary_ctxt_switches:" && status >> count) cost.wakeUps += count;
        }
    }
    return cost;
}

long memoryOf(pid_t pid, const char* file, const std::string& field) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/" + file);
    long kilobytes = 0;
    for (std::string word; status >> word;) {
        if (word == field && status >> kilobytes) break;
    }
    return kilobytes;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: startup_bench PROGRAM [STARTS [IDLE_SECONDS [label|tile]]]\n", stderr);
        return 2;
    }
    const int starts = argc > 2 ? std::atoi(argv[2]) : 20;
    const int idleSeconds = argc > 3 ? std::atoi(argv[3]) : 60;
    const std::string kind = argc > 4 ? argv[4] : "label";

    const dinmala::TemporaryFolder home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"}) setenv(name, home.path().c_str(), 1);
    setenv("DINMALA_FACE", "panel", 1);
    const dinmala::TestBus bus;
    FakePanel panel(bus, kind == "label" ? "org.gnome.Shell" : "");

    std::vector<double> milliseconds;
    for (int i = 0; i < starts; ++i) {
        panel.items.clear();
        const gint64 begin = g_get_monotonic_time();
        const pid_t pid = start(argv[1]);
        // Waits in the loop, not in naps: half a millisecond would show.
        while (pid != 0 && panel.items.empty() && g_get_monotonic_time() < begin + 10 * G_USEC_PER_SEC) {
            g_main_context_iteration(nullptr, TRUE);
        }
        milliseconds.push_back(static_cast<double>(g_get_monotonic_time() - begin) / 1000);
        if (panel.items.empty()) {
            std::fputs("the program did not register\n", stderr);
            return 1;
        }
        readAsPanelsDo(panel);
        stop(pid);
        runFor(50);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("start to registered item, %d starts: median %.1f ms, least %.1f, most %.1f\n", starts,
                milliseconds[milliseconds.size() / 2], milliseconds.front(), milliseconds.back());

    if (idleSeconds <= 0) return 0;
    panel.items.clear();
    const pid_t pid = start(argv[1]);
    if (!runUntil([&] { return !panel.items.empty(); })) return 1;
    readAsPanelsDo(panel);
    runFor(8000);  // the update check at the start is not idling
    const Cost before = costOf(pid);
    runFor(idleSeconds * 1000);
    const Cost after = costOf(pid);
    std::printf("idle on a %s panel for %d s: RSS %.1f MB, PSS %.1f MB, CPU %.1f ms, wake-ups %.2f a second\n",
                kind.c_str(), idleSeconds, static_cast<double>(memoryOf(pid, "status", "VmRSS:")) / 1024,
                static_cast<double>(memoryOf(pid, "smaps_rollup", "Pss:")) / 1024,
                static_cast<double>(after.cpuNanoseconds - before.cpuNanoseconds) / 1e6,
                static_cast<double>(after.wakeUps - before.wakeUps) / idleSeconds);
    stop(pid);
    return 0;
}
