// Dates as people type them. What is read as a day is that day however it is written; what is not has one reason,
// told without anything that a terminal or a JSON text would choke on.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "agenda/ReadDay.h"
#include "agenda/Sentences.h"
#include "almanac/Edition.h"
#include "fuzz/Require.h"

namespace {

using namespace dinmala;

bool hasControl(const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 || byte == 0x7F) return true;
        if (byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0) return true;
    }
    return false;
}

void check(const std::string& text, CalendarKind kind, const BsCalendar& calendar) {
    const auto day = readDay(text, kind, calendar);
    if (!day) {
        const std::string why = problemWith(text, kind, calendar);
        require(!hasControl(why), "a message has no control character");
        (void)nlohmann::json(why).dump();  // throws for a text that is not UTF-8
        return;
    }
    require(calendar.toDays(day->bs) == day->day, "both calendars have one day");
    for (const auto& [written, in] : {std::pair{dateText(day->bs), CalendarKind::bs},
                                      std::pair{dateText(day->bs, Digits::devanagari), CalendarKind::bs},
                                      std::pair{dateText(std::chrono::year_month_day{day->day}), CalendarKind::ad}}) {
        const auto again = readDay(written, in, calendar);
        require(again && again->day == day->day, "a day that is written is read as itself");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const CalendarKind kind : {CalendarKind::ad, CalendarKind::bs}) {
        check(text, kind, firstEdition().calendar);
        check(text, kind, currentEdition().calendar);
    }
    return 0;
}
