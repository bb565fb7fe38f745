/// The calendar in two editions: as it was first made, and as Nepal publishes it today.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "almanac/Almanac.h"
#include "base/BsCalendar.h"
#include "base/Result.h"

namespace dinmala {

enum class EditionId {
    first,    ///< the month table and the lists of BS 2065 to 2071 as first made in 2015
    current,  ///< months as published, reckoned ones after; tithis and festivals of every year
};

/// "first" and "current"; nothing for another word.
[[nodiscard]] std::optional<EditionId> editionNamed(std::string_view word);
[[nodiscard]] std::string_view editionName(EditionId edition);

/// A calendar with its almanac: a cheap value.
struct Edition {
    EditionId id;
    BsCalendar calendar;
    Almanac almanac;
    /// The last year whose months Nepal has published; later ones are provisional. The first edition tells
    /// nothing of this and names its last year.
    BsYear lastPublished;

    /// Whether Nepal has published the year. One after `lastPublished` may be, where a year between is missing.
    [[nodiscard]] bool isPublished(BsYear year) const;
};

[[nodiscard]] const Edition& firstEdition();
[[nodiscard]] const Edition& currentEdition();
[[nodiscard]] const Edition& builtInEdition(EditionId edition);

/// Whether there is an event of this id in the current edition.
[[nodiscard]] bool isCurrentEvent(std::uint16_t id);

/// The current edition with years replaced, as Nepal publishes them.
///
/// A year that ends on another day than the built-in one gives the days to the month that follows it, or
/// takes them from it: the Sun's later months begin when they did. Only a year that is not published gives
/// way. Of two given years that do not meet, the one that is not published is the wrong one, else the later one.
///
/// @param years in any order, no year twice
/// @return the error, its line the place among `years` counted from 1, when a year is not of the edition, does
///         not begin on the day after the one before, or leaves the next one's first month with fewer than 29 or
///         more than 32 days
[[nodiscard]] Result<Edition> currentEditionWith(std::span<const YearAlmanac> years);

}  // namespace dinmala
