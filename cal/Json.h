/// The JSON form of what several commands tell.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "almanac/Almanac.h"
#include "base/DateText.h"

namespace dinmala::cal {

using Json = nlohmann::ordered_json;

/// {"bs": "2070-01-01", "ad": "2013-04-14", "weekday": 1}
[[nodiscard]] Json jsonOf(const BsDate& date, std::chrono::sys_days day);

/// Adds the names and numbers of a day: with `tithis` "tithi" and with `events` "events", then "tithiNumber",
/// "eventIds", "holiday" and "grade"; the last two are null where the edition has no grades.
void addDay(Json& json, const AlmanacDay& day, bool graded, bool tithis, bool events);

/// As text for people and programs alike, with a newline.
[[nodiscard]] inline std::string printed(const Json& json) { return json.dump(2) + "\n"; }

}  // namespace dinmala::cal
