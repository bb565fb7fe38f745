// The head: year (2 bytes), published (1), first day since 1970 (3), twelve lengths. Then each day: the
// tithi (5 bits), whether the next one is skipped (1) and the tithi's grade (2); the date's grade (2) and
// the number of events (6); each event: the id (12), holiday (2) and grade (2).
#include "almanac/PackedYear.h"

namespace dinmala {

namespace {

constexpr std::size_t kHead = 18;
constexpr std::size_t kMostEvents = 63;

unsigned byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

template <typename Enum>
unsigned bits(Enum value) {
    return static_cast<unsigned>(value);
}

/// Reads the day at `at` and moves on behind it.
YearDay takeDay(std::string_view bytes, std::size_t& at) {
    YearDay day;
    const unsigned tithi = byteAt(bytes, at++);
    const unsigned rest = byteAt(bytes, at++);
    day.tithi = static_cast<std::uint8_t>(tithi & 31);
    day.skipped = (tithi & 32) != 0 ? static_cast<std::uint8_t>(day.tithi % 30 + 1) : std::uint8_t{0};
    day.tithiGrade = static_cast<Grade>(tithi >> 6);
    day.dateGrade = static_cast<Grade>(rest >> 6);
    day.events.reserve(rest & kMostEvents);
    for (unsigned i = 0; i < (rest & kMostEvents); ++i, at += 2) {
        const unsigned event = byteAt(bytes, at) << 8 | byteAt(bytes, at + 1);
        day.events.push_back({static_cast<std::uint16_t>(event >> 4), static_cast<Holiday>(event >> 2 & 3),
                              static_cast<Grade>(event & 3)});
    }
    return day;
}

void skipDay(std::string_view bytes, std::size_t& at) { at += 2 + 2 * (byteAt(bytes, at + 1) & kMostEvents); }

}  // namespace

std::string packYear(const YearAlmanac& year) {
    std::string bytes;
    const auto put = [&bytes](unsigned byte) { bytes += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto number = static_cast<unsigned>(int{year.year});
    const auto first = static_cast<unsigned>(year.days.front().day.time_since_epoch().count() + (1 << 23));
    put(number >> 8);
    put(number & 255);
    put(year.published ? 1 : 0);
    put(first >> 16);
    put(first >> 8 & 255);
    put(first & 255);
    std::array<unsigned, 12> lengths{};
    for (const YearDay& day : year.days) ++lengths[unsigned{day.date.month} - 1];
    for (const unsigned length : lengths) put(length);
    for (const YearDay& day : year.days) {
        put(day.tithi | (day.skipped != 0 ? 32u : 0u) | bits(day.tithiGrade) << 6);
        put(bits(day.dateGrade) << 6 | static_cast<unsigned>(day.events.size()));
        for (const EventEntry& event : day.events) {
            const unsigned packed = unsigned{event.id} << 4 | bits(event.holiday) << 2 | bits(event.grade);
            put(packed >> 8);
            put(packed & 255);
        }
    }
    return bytes;
}

PackedHead packedHead(std::string_view bytes) {
    PackedHead head;
    head.year = BsYear{static_cast<int>(byteAt(bytes, 0) << 8 | byteAt(bytes, 1))};
    head.published = byteAt(bytes, 2) != 0;
    const unsigned first = byteAt(bytes, 3) << 16 | byteAt(bytes, 4) << 8 | byteAt(bytes, 5);
    head.first = std::chrono::sys_days{std::chrono::days{static_cast<int>(first) - (1 << 23)}};
    for (std::size_t i = 0; i < head.lengths.size(); ++i) {
        head.lengths[i] = static_cast<std::uint8_t>(byteAt(bytes, 6 + i));
    }
    return head;
}

YearAlmanac unpackYear(std::string_view bytes) {
    const PackedHead head = packedHead(bytes);
    YearAlmanac year{head.year, head.published, {}};
    year.days.reserve(366);
    std::chrono::sys_days day = head.first;
    std::size_t at = kHead;
    for (unsigned month = 1; month <= head.lengths.size(); ++month) {
        for (unsigned number = 1; number <= head.lengths[month - 1]; ++number, day += std::chrono::days{1}) {
            year.days.push_back(takeDay(bytes, at));
            year.days.back().date = {head.year, BsMonth{month}, BsDay{number}};
            year.days.back().day = day;
        }
    }
    return year;
}

std::optional<YearDay> unpackDay(std::string_view bytes, BsMonth month, BsDay day) {
    const PackedHead head = packedHead(bytes);
    if (!month.ok() || unsigned{day} - 1 >= head.lengths[unsigned{month} - 1]) return std::nullopt;
    unsigned before = unsigned{day} - 1;
    for (unsigned i = 1; i < unsigned{month}; ++i) before += head.lengths[i - 1];
    std::size_t at = kHead;
    for (unsigned i = 0; i < before; ++i) skipDay(bytes, at);
    YearDay found = takeDay(bytes, at);
    found.date = {head.year, month, day};
    found.day = head.first + std::chrono::days{before};
    return found;
}

}  // namespace dinmala
