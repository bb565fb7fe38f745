// How long the program takes from its start to a registered item, and what it costs while nothing happens.
// usage: startup_bench PROGRAM [STARTS [IDLE_SECONDS [label|tile]]]
//
// It plays the panel on a session bus of its own: it reads the item and its menu as a panel does.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/app/faces/panel/FakePanel.h"
#include "tests/support/TemporaryFolder.h"

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

double memoryOf(pid_t pid, const char* file, const std::string& field) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/" + file);
    long kilobytes = 0;
    for (std::string word; status >> word;) {
        if (word == field && status >> kilobytes) break;
    }
    return static_cast<double>(kilobytes) / 1024;
}

/// How often each of the process's threads has gone to wait.
std::map<std::string, long long> wakeUpsOf(pid_t pid) {
    std::map<std::string, long long> wakeUps;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task")) {
        std::ifstream status(task.path() / "status");
        for (std::string word; status >> word;) {
            long long count = 0;
            if (word == "voluntary_ctxt_switches:" && status >> count) wakeUps[task.path().filename()] = count;
        }
    }
    return wakeUps;
}

/// What a process has used since its start, and what it holds.
struct Cost {
    explicit Cost(pid_t pid)
        : rss(memoryOf(pid, "status", "VmRSS:")),
          pss(memoryOf(pid, "smaps_rollup", "Pss:")),
          descriptors(std::distance(std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/fd"),
                                    std::filesystem::directory_iterator())),
          wakeUps(wakeUpsOf(pid)) {
        clockid_t clock{};
        timespec used{};
        if (clock_getcpuclockid(pid, &clock) == 0) clock_gettime(clock, &used);
        cpuMilliseconds = static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
    }

    double rss, pss;  ///< megabytes
    std::ptrdiff_t descriptors;
    std::map<std::string, long long> wakeUps;
    double cpuMilliseconds = 0;  ///< with that of threads that have ended
};

/// After a signal MATE's panel asks for the property that has changed, and for the menu only when it is opened.
/// It asks for all at once and does not wait.
void readWhatChanged(FakePanel& panel) {
    static const std::map<std::string, const char*> properties{
        {"NewTitle", "Title"}, {"NewToolTip", "ToolTip"}, {"NewIcon", "IconPixmap"}};
    const auto text = [](const char* value) { return Glib::Variant<Glib::ustring>::create(value); };
    for (const std::string& signal : std::exchange(panel.signals, {})) {
        const auto found = properties.find(signal);
        if (found == properties.end()) continue;
        panel.connection()->call(
            "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
            Glib::VariantContainerBase::create_tuple({text("org.kde.StatusNotifierItem"), text(found->second)}),
            [](const auto&) {}, panel.items.back());
    }
}

/// Waits without work of its own, but reads what the item tells as a panel does.
void idle(FakePanel& panel, int seconds) {
    const auto loop = Glib::MainLoop::create();
    const gint64 end = g_get_monotonic_time() + gint64{seconds} * G_USEC_PER_SEC;
    const sigc::connection source = Glib::signal_timeout().connect(
        [&] {
            readWhatChanged(panel);
            if (g_get_monotonic_time() < end) return true;
            loop->quit();
            return false;
        },
        10);  // at once, as panels do; their wake-ups are not counted
    loop->run();
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
    panel.signals.clear();
    const Cost before(pid);
    idle(panel, idleSeconds);
    const Cost after(pid);
    long long wakeUps = 0;
    for (const auto& [thread, count] : after.wakeUps) {
        const auto earlier = before.wakeUps.find(thread);
        wakeUps += count - (earlier != before.wakeUps.end() ? earlier->second : 0);
    }
    std::printf("idle on a %s panel for %d s, at its start and end:\n", kind.c_str(), idleSeconds);
    std::printf("  RSS          %6.1f %6.1f MB\n", before.rss, after.rss);
    std::printf("  PSS          %6.1f %6.1f MB\n", before.pss, after.pss);
    std::printf("  descriptors  %6td %6td\n", before.descriptors, after.descriptors);
    std::printf("  CPU          %6.1f ms in all\n", after.cpuMilliseconds - before.cpuMilliseconds);
    std::printf("  wake-ups     %6.2f a second\n", static_cast<double>(wakeUps) / idleSeconds);
    stop(pid);
    return 0;
}
