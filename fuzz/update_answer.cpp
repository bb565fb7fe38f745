// The body of the update endpoint's answer. Blanks around it and what else the
// object says change nothing.
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/AppDelegate.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string body(reinterpret_cast<const char*>(data), size);
    const bool announced = dinmala::announcesUpdate(body);
    dinmala::require(dinmala::announcesUpdate(body + " \n") == announced, "a blank at the end changes nothing");
    dinmala::require(!announced || !dinmala::announcesUpdate("[" + body + "]"), "a list announces nothing");
    if (announced && body[0] == '{') {
        dinmala::require(dinmala::announcesUpdate("{\"other\":[0]," + body.substr(1)), "another key changes nothing");
    }
    return 0;
}
