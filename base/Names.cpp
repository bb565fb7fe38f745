#include "base/Names.h"

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

const std::array<std::string_view, 12> kBsMonthsEnglish = {
    "Baishakh", "Jestha", "Ashadh", "Shrawan", "Bhadra", "Ashwin",
    "Kartik", "Mangsir", "Poush", "Magh", "Falgun", "Chaitra",
};

const std::array<std::string_view, 7> kWeekDaysEnglish = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday",
};

const std::array<std::string_view, 12> kAdMonthsEnglish = {
    "January", "February", "March", "April", "May", "June",
    "July", "August", "September", "October", "November", "December",
};

const std::array<std::string_view, 12> kAdMonthsNepali = {
    "जनवरी", "फेब्रुअरी", "मार्च", "अप्रिल", "मे", "जुन",
    "जुलाई", "अगस्ट", "सेप्टेम्बर", "अक्टोबर", "नोभेम्बर", "डिसेम्बर",
};

const std::array<std::string_view, 30> kTithis = {
    "प्रतिपदा", "द्वितीया", "तृतीया", "चतुर्थी", "पञ्चमी", "षष्ठी", "सप्तमी", "अष्टमी",
    "नवमी", "दशमी", "एकादशी", "द्वादशी", "त्रयोदशी", "चतुर्दशी", "पूर्णिमा",
    "प्रतिपदा", "द्वितीया", "तृतीया", "चतुर्थी", "पञ्चमी", "षष्ठी", "सप्तमी", "अष्टमी",
    "नवमी", "दशमी", "एकादशी", "द्वादशी", "त्रयोदशी", "चतुर्दशी", "औंसी",
};

const std::array<std::string_view, 30> kTithisEnglish = {
    "Pratipada", "Dwitiya", "Tritiya", "Chaturthi", "Panchami", "Shashthi", "Saptami", "Ashtami",
    "Navami", "Dashami", "Ekadashi", "Dwadashi", "Trayodashi", "Chaturdashi", "Purnima",
    "Pratipada", "Dwitiya", "Tritiya", "Chaturthi", "Panchami", "Shashthi", "Saptami", "Ashtami",
    "Navami", "Dashami", "Ekadashi", "Dwadashi", "Trayodashi", "Chaturdashi", "Aunsi",
};

// clang-format on

std::string_view tithiName(unsigned tithi, Language language) {
    return nameAt(language == Language::nepali ? kTithis : kTithisEnglish, tithi);
}

std::string tithiTitle(unsigned tithi, Language language) {
    const std::string_view name = tithiName(tithi, language);
    if (name.empty() || tithi % 15 == 0) return std::string{name};
    const bool isBright = tithi < 15;
    if (language == Language::english) return (isBright ? "Shukla " : "Krishna ") + std::string{name};
    return (isBright ? "शुक्ल " : "कृष्ण ") + std::string{name};
}

std::string_view bsMonthName(BsMonth month, Language language) {
    return nameAt(language == Language::nepali ? kBsMonths : kBsMonthsEnglish, unsigned{month});
}

std::string_view adMonthName(std::chrono::month month, Language language) {
    return nameAt(language == Language::nepali ? kAdMonthsNepali : kAdMonthsEnglish, unsigned{month});
}

std::string_view adMonthShort(std::chrono::month month) { return nameAt(kAdMonthsShort, unsigned{month}); }

std::string_view weekDayName(unsigned weekDay, Language language) {
    return nameAt(language == Language::nepali ? kWeekDaysNepali : kWeekDaysEnglish, weekDay);
}

std::string_view weekDayShort(unsigned weekDay, Language language) {
    if (language == Language::english) return nameAt(kWeekDaysShort, weekDay);
    std::string_view name = nameAt(kWeekDaysNepali, weekDay);
    constexpr std::string_view kDay = "वार";
    if (name.ends_with(kDay)) name.remove_suffix(kDay.size());
    return name;
}

std::string_view weekDayLetter(unsigned weekDay, Language language) {
    constexpr std::array<std::string_view, 7> kNepali{"आ", "सो", "मं", "बु", "बि", "शु", "श"};
    return language == Language::nepali ? nameAt(kNepali, weekDay) : nameAt(kWeekDaysEnglish, weekDay).substr(0, 2);
}

}  // namespace dinmala
