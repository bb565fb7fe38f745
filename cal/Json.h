/// The JSON form of what several commands tell.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cal/Dates.h"
#include "cal/Names.h"

namespace dinmala::cal {

using Json = nlohmann::ordered_json;

/// {"bs": "2070-01-01", "ad": "2013-04-14", "weekday": 1}
[[nodiscard]] inline Json jsonOf(const Day& day, const DayFinder& finder) {
    return {{"bs", dateText(day.bs)}, {"ad", dateText(day.ad)}, {"weekday", finder.weekDay(day)}};
}

/// As text for people and programs alike, with a newline.
[[nodiscard]] inline std::string printed(const Json& json) { return json.dump(2) + "\n"; }

}  // namespace dinmala::cal
