// The almanac's constants, made at build time by tools/make_tables from the text
// files of the same names in almanac/data.
#include <array>

#include "almanac/DataStoreEvents.h"
#include "almanac/DataStoreTithi.h"

namespace dinmala {

namespace {

#include "generated/event_names.inc"
#include "generated/event_years.inc"
#include "generated/important_years.inc"
#include "generated/tithi_names.inc"
#include "generated/tithi_years.inc"

}  // namespace

const EventTexts& embeddedEventTexts() {
    static constexpr EventTexts texts{kEventNames, kEventYears, kImportantYears};
    return texts;
}

const TithiTexts& embeddedTithiTexts() {
    static constexpr TithiTexts texts{kTithiNames, kTithiYears};
    return texts;
}

}  // namespace dinmala
