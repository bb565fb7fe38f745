// The preference file: whatever stands in it, a choice is kept, and the other
// choices read as before.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "desktop/KeyFilePreferences.h"
#include "fuzz/Require.h"

namespace {

/// A folder in memory where there is one: every input is a save.
std::string makeTestFolder() {
    const std::filesystem::path parent = std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp";
    std::string name = (parent / "dinmala-fuzz-XXXXXX").string();
    dinmala::require(mkdtemp(name.data()) != nullptr, "a folder can be made");
    static const std::string kept = name;
    std::atexit([] { std::filesystem::remove_all(kept); });
    return name;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string folder = makeTestFolder();
    const std::string path = folder + "/preferences.ini";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    dinmala::KeyFilePreferences before(path, {});
    const bool day = !before.boolForKey("day");
    before.setBoolForKey(day, "day");
    dinmala::require(before.synchronize(), "the choice can be kept");
    const dinmala::KeyFilePreferences after(path, {});
    dinmala::require(after.boolForKey("day") == day, "the choice was kept");
    for (const char* key : {"icon", "year", "month", "dow", "time", "tithi", "event"}) {
        dinmala::require(after.boolForKey(key) == before.boolForKey(key), key);
    }
    std::filesystem::remove(path + ".corrupt");
    return 0;
}
