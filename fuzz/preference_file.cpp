// The preference file: whatever stands in it, a choice is kept, and the other
// choices read as before.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "desktop/KeyFilePreferences.h"
#include "fuzz/Files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path =
        dinmala::memoryFolder().write("preferences.ini", {reinterpret_cast<const char*>(data), size});
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
