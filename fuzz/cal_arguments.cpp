// dinmala-cal's arguments, one a line, and after an empty line its standard input: it ends with 0, 1 or 2, what it
// tells with --json is JSON, and it tells the same twice.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "fuzz/Files.h"

/// The program's own main(), under another name.
int calMain(int argc, char** argv);

namespace {

using dinmala::require;

int told(std::vector<std::string> words, const std::string& input, std::string& output) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int status = 0;
    output = dinmala::writtenBy(input, [&](int in, int out) {
        dup2(in, STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        status = calMain(static_cast<int>(words.size()), arguments.data());
        std::cout.flush();
        fflush(stdout);
    });
    return status;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool ready = [] {
        for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME"}) setenv(name, "/nowhere", 1);
        std::cerr.rdbuf(nullptr);
        return (stderr = fopen("/dev/null", "w")) != nullptr;
    }();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t gap = std::min(text.find("\n\n"), text.size());
    const std::string input = gap < text.size() ? text.substr(gap + 2) : "";
    std::vector<std::string> words{"dinmala-cal", "--date=2026-11-23"};
    for (std::size_t at = 0; at < gap;) {
        const std::size_t end = std::min(text.find('\n', at), gap);
        words.push_back(text.substr(at, end - at).c_str());
        at = end + 1;
    }
    bool json = false;
    for (const std::string& word : words) {
        // Nothing that names a file to write.
        for (const char* part : {"/", "~", "follow", "output"}) {
            if (word.find(part) != std::string::npos) return 0;
        }
        json = json || word == "--json";
    }
    std::string output, again;
    const int status = told(words, input, output);
    require(ready && status >= 0 && status <= 2, "it ends with 0, 1 or 2");
    require(told(words, input, again) == status && output == again, "it tells the same twice");
    if (json && status == 0 && output.starts_with('{')) {
        require(nlohmann::json::accept(output), "what it tells with --json is JSON");
    }
    return 0;
}
