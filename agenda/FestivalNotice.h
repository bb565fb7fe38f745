/// Which festivals a person is told of, and when: a decision over values, taken anew at every minute.
///
/// Days are Nepal's, as the date that is shown; the time of day is that of the person's own clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "almanac/Edition.h"
#include "base/TimeZone.h"

namespace dinmala {

enum class TellWhen {
    never,
    evening,  ///< from 18:00 of the day before on
    morning,  ///< from 07:00 of the day on; where Nepal's day begins later in the morning, from then on
};

enum class TellOf {
    holidays,  ///< events on which everybody, or a group or region, has the day off; all, where an edition knows none
    all,
};

struct TellChoice {
    TellWhen when = TellWhen::never;
    TellOf of = TellOf::holidays;
};

/// What a person was told already, in whatever order: the clock may have been set.
struct ToldFestivals {
    std::vector<std::chrono::sys_days> days;  ///< whose festivals were told of
    std::vector<std::uint16_t> left;          ///< events of which nothing more is to be told
};

struct FestivalNotice {
    std::chrono::sys_days today;
    /// Today, tomorrow, or both, each with those of its events that are to be told, holidays first. Never empty.
    std::vector<AlmanacDay> days;
};

/// What is to be told now, if anything. Nothing twice once its days are in `told`, never anything of a day past, and at
/// most once in a day of Nepal's: who is late to be told of today is told of tomorrow with it.
[[nodiscard]] std::optional<FestivalNotice> dueNotice(const Edition& edition, Moment now, const TimeZone& zone,
                                                      const TellChoice& choice, const ToldFestivals& told);

}  // namespace dinmala
