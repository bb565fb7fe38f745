/// How far a day can be trusted, and who has it off.
#pragma once

#include <cstdint>

namespace dinmala {

/// How far a day, a tithi or an event can be trusted, best first.
enum class Grade : std::uint8_t {
    published,  ///< Nepal has published or declared this very thing
    sure,       ///< reckoned, more than 25 minutes from where it would be another day's
    near,       ///< reckoned, 2 to 25 minutes from there
    open,       ///< reckoned, less than 2 minutes from there, or the lunar months are unsettled
};

/// Whether people have the day off for an event, most last.
enum class Holiday : std::uint8_t {
    none,
    observed,  ///< kept officially, offices are open
    group,     ///< a day off for a group of people or a region
    national,  ///< a public holiday
};

/// Minutes between an instant that decides a day and the nearest one at which it would decide otherwise: more than the
/// first is sure, fewer than the second is open. docs/reckoning.md tells what they were measured by.
inline constexpr double kSureMinutes = 25.0;
inline constexpr double kOpenMinutes = 2.0;

/// The grade of what would be otherwise if the sky were `minutes` earlier or later.
[[nodiscard]] constexpr Grade gradeOf(double minutes) {
    return minutes > kSureMinutes ? Grade::sure : minutes < kOpenMinutes ? Grade::open : Grade::near;
}

}  // namespace dinmala
