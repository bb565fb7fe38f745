// Festival rules, dated corrections and holidays, parted by a line "==". A file that is wrong tells its line; what is
// read puts festivals on days of the year alone, in order, and twice the same.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "almanac/Edition.h"
#include "fuzz/Require.h"
#include "panchanga/DaySky.h"
#include "panchanga/Festivals.h"

namespace {

using namespace dinmala;
using namespace dinmala::panchanga;

void requirePlace(const std::optional<FileError>& error) {
    require(!error || error->text.rfind("rules:", 0) == 0, "an error tells its file and line");
}

/// Years of every kind: plain, with an extra month, with a lost one.
const std::array<SkyYear, 3>& skies() {
    static const Panchanga kSky{kNepalReckoning};
    static const std::array<SkyYear, 3> kSkies{SkyYear{2083, currentEdition().calendar, kSky},
                                               SkyYear{2069, currentEdition().calendar, kSky},
                                               SkyYear{2085, currentEdition().calendar, kSky}};
    return kSkies;
}

void requireDays(const Festivals& festivals) {
    for (const SkyYear& sky : skies()) {
        for (const auto& [id, festival] : festivals.all()) {
            for (const Occurrence& one : festivals.daysOf(id, sky)) {
                require(sky.first() <= one.day && one.day <= sky.last(), "a festival is on a day of its year");
            }
        }
        const auto days = festivals.celebrations(sky);
        require(std::is_sorted(days.begin(), days.end(),
                               [](const Celebration& a, const Celebration& b) { return a.day < b.day; }),
                "days are told in order");
        for (const Celebration& one : days) {
            require(sky.first() <= one.day && one.day <= sky.last(), "a festival is on a day of its year");
            require(one.festival->trust != Trust::unknown, "an unknown day is not told");
        }
        if (!days.empty()) {
            const DayReasons reasons = reasonsOf(days.front().day, sky, festivals);
            require(!reasons.celebrations.empty(), "a day's reasons tell its festivals");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t first = text.find("==\n");
    const std::size_t second = first == std::string::npos ? first : text.find("==\n", first + 3);
    std::istringstream rules{text.substr(0, first)};
    Festivals festivals;
    requirePlace(festivals.read(rules, "rules"));
    if (first != std::string::npos) {
        std::istringstream corrections{
            text.substr(first + 3, second == std::string::npos ? second : second - first - 3)};
        requirePlace(festivals.readCorrections(corrections, "rules"));
    }
    if (second != std::string::npos) {
        std::istringstream holidays{text.substr(second + 3)};
        requirePlace(festivals.readHolidays(holidays, "rules"));
    }
    requireDays(festivals);
    return 0;
}
