// dinmala-cal's stream of dates: what is told of a line does not depend on the lines around it, nor on how the reads
// fall.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "almanac/Edition.h"
#include "cal/Convert.h"
#include "fuzz/Files.h"

namespace {

using namespace dinmala;

/// What the stream becomes.
std::string converted(std::string_view input, const cal::Settings& settings, int& status) {
    return writtenBy(
        input, [&](int from, int to) { status = cal::convertStream(currentEdition().calendar, settings, from, to); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool quiet =
        (stderr = fopen("/dev/null", "w")) != nullptr;  // the complaints; the fuzzer keeps its own
    if (!quiet || size == 0) return 0;
    cal::Settings settings;
    settings.from = (data[0] & 1) != 0 ? CalendarKind::bs : CalendarKind::ad;
    settings.digits = (data[0] & 2) != 0 ? Digits::devanagari : Digits::western;
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if ((data[0] & 4) != 0) text.insert(text.size() / 2, 70000, ' ');  // past a read's length
    int status = 0;
    const std::string whole = converted(text, settings, status);
    std::string one, apart;
    bool bad = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
        apart += converted(std::string_view{text}.substr(at, end - at), settings, status);
        bad = bad || status != 0;
        at = end;
    }
    converted(text, settings, status);
    require(whole == apart, "a line is told as it is told alone");
    require((status != 0) == bad, "a bad line makes the status, and nothing else does");
    return 0;
}
