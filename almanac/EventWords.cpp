#include "almanac/EventWords.h"

#include <algorithm>
#include <array>

#include "base/DateText.h"

namespace dinmala {

namespace {

#include "generated/english_event_names.inc"

}  // namespace

std::string_view englishEventName(std::uint16_t id) {
    const auto found = std::lower_bound(
        kEnglishEventNames.begin(), kEnglishEventNames.end(), static_cast<int>(id),
        [](const KeyedText& entry, int wanted) { return readNumber(entry.first).value_or(0) < wanted; });
    return found != kEnglishEventNames.end() && readNumber(found->first) == id ? found->second : std::string_view{};
}

std::span<const KeyedText> englishEventNames() { return kEnglishEventNames; }

}  // namespace dinmala
