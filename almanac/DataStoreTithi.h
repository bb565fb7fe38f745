/// The tithi catalogue: which tithi (lunar day) a BS day shows.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "almanac/YearList.h"

namespace dinmala {

/// The texts that a tithi catalogue is built from. They must outlive it.
struct TithiTexts {
    std::span<const KeyedText> names;  ///< id, name
    std::span<const KeyedText> years;  ///< year key "2070", tokens ddMM + id
};

/// The lists compiled into the program, made from almanac/data.
[[nodiscard]] const TithiTexts& embeddedTithiTexts();

class DataStoreTithi {
public:
    explicit DataStoreTithi(const TithiTexts& texts = embeddedTithiTexts());

    /// The tithi names of a day in list order; keys as in DataStoreEvents, see
    /// namesOfDay().
    [[nodiscard]] std::vector<std::string> getTithiAtYearAndDayMonth(std::string_view year,
                                                                     std::string_view dayMonth) const;

    /// Names by id, lists by year.
    [[nodiscard]] const TextMap& tithi() const { return *tithi_; }
    [[nodiscard]] const TextMap& tithi_map() const { return *tithi_map_; }

private:
    std::shared_ptr<const TextMap> tithi_;
    std::shared_ptr<const TextMap> tithi_map_;
};

}  // namespace dinmala
