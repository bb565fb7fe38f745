// A message with its values in place of {1}, {2}, {3}: whatever a translator writes, each value stands where its mark
// stood, what is no mark is kept, and a value is not read again.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/Require.h"
#include "i18n/Translation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string message{reinterpret_cast<const char*>(data), size};
    const std::string text = message.substr(0, message.find('\0'));
    if (text.empty()) return 0;  // asks for the catalogue's head
    const std::string values[] = {"{2}", "", "तीन {1"};
    // From the end, so that what was put in is behind what is looked at.
    std::string expected = text;
    std::vector<std::size_t> marks;
    for (std::size_t at = 0; at + 2 < text.size(); ++at) {
        if (text[at] != '{' || text[at + 2] != '}' || text[at + 1] < '1' || text[at + 1] > '3') continue;
        marks.push_back(at);
        at += 2;
    }
    for (auto at = marks.rbegin(); at != marks.rend(); ++at) {
        expected.replace(*at, 3, values[static_cast<std::size_t>(text[*at + 1] - '1')]);
    }
    dinmala::require(dinmala::tr(text.c_str(), {values[0], values[1], values[2]}) == expected, "values are put in");
    return 0;
}
