// An entry of the autostart folder, and a program's path: a path that is written
// into a command line is read out of it again as it was.
#include <glib.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "desktop/AutostartLoginItems.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto started = dinmala::startedProgram(text);
    dinmala::require(!started || started->starts_with('/'), "a program has an absolute path");

    const std::string path = "/" + text.substr(0, text.find('\0'));
    int count = 0;
    char** words = nullptr;
    const bool parsed = g_shell_parse_argv(dinmala::execLine(path).c_str(), &count, &words, nullptr) != FALSE;
    dinmala::require(parsed && (count == 1 || count == 4), "a path makes a command line");
    std::string last = words[count - 1];
    for (std::size_t at = 0; (at = last.find("%%", at)) != std::string::npos; ++at) last.erase(at, 1);
    dinmala::require(last == path, "the path is read as it was");
    g_strfreev(words);
    return 0;
}
