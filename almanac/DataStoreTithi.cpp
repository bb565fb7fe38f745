#include "almanac/DataStoreTithi.h"

namespace dinmala {

DataStoreTithi::DataStoreTithi(const TithiTexts& texts) {
    const TithiTexts& own = embeddedTithiTexts();
    tithi_ = sharedTextMap(texts.names, own.names);
    tithi_map_ = sharedTextMap(texts.years, own.years);
}

std::vector<std::string> DataStoreTithi::getTithiAtYearAndDayMonth(std::string_view year,
                                                                   std::string_view dayMonth) const {
    return namesOfDay(*tithi_map_, *tithi_, year, dayMonth);
}

}  // namespace dinmala
