#include "calendar/Names.h"

namespace dinmala {

// clang-format off

const std::array<std::string_view, 10> kDevanagariDigits = {
    "०", "१", "२", "३", "४", "५", "६", "७", "८", "९",
};

const std::array<std::string_view, 33> kDateNumerals = {
    "०", "१", "२", "३", "४", "५", "६", "७", "८", "९", "१०",
    "११", "१२", "१३", "१४", "१५", "१६", "१७", "१८", "१९", "२०", "२१",
    "२२", "२३", "२४", "२५", "२६", "२७", "२८", "२९", "३०", "३१", "३२",
};

const std::array<std::string_view, 60> kTimeNumerals = {
    "००", "०१", "०२", "०३", "०४", "०५", "०६", "०७", "०८", "०९",
    "१०", "११", "१२", "१३", "१४", "१५", "१६", "१७", "१८", "१९",
    "२०", "२१", "२२", "२३", "२४", "२५", "२६", "२७", "२८", "२९",
    "३०", "३१", "३२", "३३", "३४", "३५", "३६", "३७", "३८", "३९",
    "४०", "४१", "४२", "४३", "४४", "४५", "४६", "४७", "४८", "४९",
    "५०", "५१", "५२", "५३", "५४", "५५", "५६", "५७", "५८", "५९",
};

const std::array<std::string_view, 7> kWeekDaysShort = {
    "Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat",
};

const std::array<std::string_view, 7> kWeekDaysLong = {
    "SUNDAY", "MONDAY", "TUEDAY", "WEDENSDAY", "THURDAY", "FRIDAY", "SATURDAY",
};

const std::array<std::string_view, 7> kWeekDaysNepali = {
    "आइतवार", "सोमवार", "मङ्गलवार", "बुधवार", "बिहिवार", "शुक्रवार", "शनिवार",
};

const std::array<std::string_view, 12> kAdMonthsShort = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec",
};

const std::array<std::string_view, 12> kAdMonthsLong = {
    "JANUARY", "FEBUARY", "MARCH", "APRIL", "MAY", "JUNE",
    "JULY", "AUGUST", "SEPTEMBER", "OCTOBER", "NOVEMBER", "DECEMBER",
};

const std::array<std::string_view, 12> kBsMonths = {
    "बैशाख", "जेठ", "आषाढ", "साउन", "भाद्र", "आश्विन",
    "कार्तिक", "मंसिर", "पौष", "माघ", "फाल्गुण", "चैत्र",
};

// clang-format on

}  // namespace dinmala
