/// Why a day has its BS date, its tithi and its festivals.
#pragma once

#include <string>

#include "almanac/Edition.h"
#include "cal/Settings.h"

namespace dinmala::cal {

/// Reckons the day's year anew, by the rules of almanac/rules that the program carries, and tells for date, tithi and
/// each event what decides it: the instants in Nepal's time, the rule with its source, how far the decision is from
/// falling otherwise, the grade, and the dated source that goes before the rule. The first edition was published as
/// it stands; of it only that is told.
///
/// REQUIRES: a day of the edition's almanac.
[[nodiscard]] std::string explanation(const Edition& edition, const AlmanacDay& day, const Settings& settings);

}  // namespace dinmala::cal
