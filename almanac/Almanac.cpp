#include "almanac/Almanac.h"

#include <algorithm>
#include <array>

namespace dinmala {

std::string_view gradeName(Grade grade) {
    static constexpr std::array<std::string_view, 4> kNames{"published", "sure", "near", "open"};
    return kNames[static_cast<std::size_t>(grade)];
}

std::string_view holidayName(Holiday holiday) {
    static constexpr std::array<std::string_view, 4> kNames{"none", "observed", "group", "national"};
    return kNames[static_cast<std::size_t>(holiday)];
}

Holiday AlmanacDay::holiday() const {
    Holiday most = Holiday::none;
    for (const Event& event : events) most = std::max(most, event.holiday);
    return most;
}

bool Almanac::holds(BsYear year) const {
    const std::vector<BsYear> all = years();
    return std::binary_search(all.begin(), all.end(), year);
}

}  // namespace dinmala
