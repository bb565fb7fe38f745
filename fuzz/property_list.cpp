// A property list, XML or binary: keys and texts without a zero, and the same
// answer twice.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "desktop/PropertyListFile.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto list = dinmala::parsePropertyList(text);
    if (!list) return 0;
    for (const auto& [key, value] : *list) {
        dinmala::require(key.find('\0') == std::string::npos, "a key has no zero");
        const auto* string = std::get_if<std::string>(&value);
        dinmala::require(string == nullptr || string->find('\0') == std::string::npos, "a text has no zero");
    }
    const auto again = dinmala::parsePropertyList(text);
    dinmala::require(again && again->size() == list->size(), "the same answer twice");
    return 0;
}
