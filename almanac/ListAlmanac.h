/// An almanac of token lists: those of the first edition, or a program's own.
#pragma once

#include "almanac/Almanac.h"
#include "almanac/DataStoreEvents.h"
#include "almanac/DataStoreTithi.h"

namespace dinmala {

/// The tithis and events that the lists put on the days of a calendar. Tokens without a name are left out, and
/// days that the calendar does not have. A tithi's half is told by the sky where its name does not tell it.
///
/// The texts must outlive the almanac.
[[nodiscard]] Almanac almanacOfLists(const EventTexts& events, const TithiTexts& tithis, const BsCalendar& calendar);

}  // namespace dinmala
