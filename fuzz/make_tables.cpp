// What makes the tables: a file is refused with its name and what is wrong, or becomes constants that hold all its ids.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/Files.h"

/// The generator's own main(), under another name.
int makeTablesMain(int argc, char** argv);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using dinmala::require;
    namespace fs = std::filesystem;
    if (size == 0) return 0;
    const dinmala::TemporaryFolder& folder = dinmala::memoryFolder();
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string in = folder.write("list-2070.txt", text), out = folder.path("out"),
                      lengths = SOURCE_DIR "/calendar/data/month_lengths.txt";
    fs::remove(out);
    const std::vector<std::vector<std::string>> kModes{{"months", out, in},
                                                       {"names", "kOut", out, in},
                                                       {"years", "kOut", out, lengths, in},
                                                       {"dates", "kOut", out, in},
                                                       {"lengths", "kOut", out, in},
                                                       {"fixed", "kOut", out, in},
                                                       {"packed", "kOut", out, "--", in}};
    std::vector<std::string> words{"make_tables"};
    const auto& mode = kModes[data[0] % kModes.size()];
    words.insert(words.end(), mode.begin(), mode.end());
    std::vector<char*> arguments;
    arguments.reserve(words.size());
    for (std::string& word : words) arguments.push_back(word.data());

    std::ostringstream said;
    std::streambuf* const before = std::cerr.rdbuf(said.rdbuf());
    const int status = makeTablesMain(static_cast<int>(arguments.size()), arguments.data());
    std::cerr.rdbuf(before);
    if (status != 0) {
        require(said.str().find("list-2070.txt") != std::string::npos, "a refusal names the file");
        require(!fs::exists(out), "what is refused leaves nothing");
        return 0;
    }
    const std::string constants = folder.read("out");
    require(constants.find("do not edit") != std::string::npos, "constants are made");
    if (mode[0] == "names") {
        // A bar an entry; no name has a quote.
        std::ptrdiff_t entries = 0;
        for (std::size_t at = 0; (at = constants.find("{\"", at)) != std::string::npos; ++at) ++entries;
        require(entries == std::count(text.begin(), text.end(), '|') || text.find('#') != std::string::npos,
                "each name is there");
    }
    return 0;
}
