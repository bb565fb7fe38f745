#include "almanac/DataStoreTithi.h"

namespace dinmala {

DataStoreTithi::DataStoreTithi(const TithiTexts& texts)
    : tithi_(toTextMap(texts.names)), tithi_map_(toTextMap(texts.years)) {}

std::vector<std::string> DataStoreTithi::getTithiAtYearAndDayMonth(std::string_view year,
                                                                   std::string_view dayMonth) const {
    return namesOfDay(tithi_map_, tithi_, year, dayMonth);
}

}  // namespace dinmala
