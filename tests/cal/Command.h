/// Runs dinmala-cal as a person or a script does.
#pragma once

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace dinmala::test {

struct Result {
    std::string out;
    std::string err;
    int status = -1;
};

/// A folder of this process, where the command finds neither preferences nor years unless a test puts them there.
inline const TemporaryFolder& testFolder() {
    static const TemporaryFolder folder;
    return folder;
}

inline std::string testEnvironment() {
    const std::string at = testFolder().path();
    return "env -u DINMALA_EDITION -u NO_COLOR XDG_CONFIG_HOME=" + at + " XDG_DATA_HOME=" + at +
           " XDG_DATA_DIRS=" + at + " ";
}

/// Runs it with a shell's idea of `arguments`, output and errors apart, in the first edition unless `environment`
/// has another.
inline Result run(const std::string& arguments, const std::string& input = "",
                  const std::string& environment = "DINMALA_EDITION=first") {
    const TemporaryFolder& folder = testFolder();
    const std::string command = testEnvironment() + environment + " " DINMALA_CAL " " + arguments + " <" +
                                folder.write("in", input) + " >" + folder.path("out") + " 2>" + folder.path("err");
    const int status = std::system(command.c_str());
    return {folder.read("out"), folder.read("err"), WEXITSTATUS(status)};
}

/// What it writes to a terminal, `environment` being "NAME=value" or "".
inline std::string runOnTerminal(const std::string& arguments, const std::string& environment) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        const std::string command =
            testEnvironment() + "TERM=xterm DINMALA_EDITION=first " + environment + " " + DINMALA_CAL + " " + arguments;
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    std::string text;
    char buffer[4096];
    for (ssize_t got = 0; (got = read(terminal, buffer, sizeof buffer)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(got));
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    return text;
}

}  // namespace dinmala::test
