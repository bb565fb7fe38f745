/// The shell kept alive on a moved clock for as long as wanted, held at its steps
/// to a shell that was started at that very moment.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/FakePlatform.h"

namespace dinmala::test {

/// Time moves to every full hour and the minute before it, and through every minute
/// from five before to five after each midnight in Nepal. At each step the loop ticks
/// once, and the shell must have refreshed: the time is the clock's, the date another
/// than at the last step only on another day. At the first noon of each month the
/// clock is set back an hour and put right, and the machine sleeps for three.
class LongLife {
public:
    enum class Compare {
        everyStep,
        aroundMidnight,  ///< from five minutes before to five after, and the noons with jumps
    };

    /// Begins at midnight in Nepal.
    LongLife(std::chrono::year_month_day birth, Compare compare, const std::vector<const char*>& on)
        : day_(birth), compare_(compare) {
        for (const char* key : on) shell.preferences.setBoolForKey(true, key);
        shell.now = at(std::chrono::minutes{-1});
        shell.delegate->awakeFromNib();
        shell.delegate->applicationDidFinishLaunching(nullptr);
        date_ = dateShown();
    }

    void liveUntil(std::chrono::year_month_day end) {
        for (; day_ < std::chrono::sys_days{end}; day_ += std::chrono::days{1}) {
            for (int minute = 0; minute < kMinutesADay; ++minute) {
                const bool besideMidnight = minute <= 5 || minute >= kMinutesADay - 5;
                if (!besideMidnight && minute % 60 != 0 && minute % 60 != 59) continue;
                shell.now = at(std::chrono::minutes{minute});
                step(shell.runLoop.tick, minute == 0, besideMidnight);
                if (minute == kNoon && std::chrono::year_month_day{day_}.day() == std::chrono::day{1}) jump();
            }
        }
    }

    Shell shell;
    std::uint64_t steps = 0, comparisons = 0;
    std::vector<std::string> faults;  ///< the first ten

private:
    static constexpr int kMinutesADay = 24 * 60;
    static constexpr int kNoon = 12 * 60;

    /// The loop never ticks on the very second.
    [[nodiscard]] Moment at(std::chrono::minutes minute) const {
        return Moment{day_} + minute + std::chrono::milliseconds{700} -
               (std::chrono::hours{5} + std::chrono::minutes{45});
    }

    void jump() {
        using namespace std::chrono_literals;
        const Moment noon = shell.now;
        shell.now = noon - 1h;
        step(shell.runLoop.clockChanged, false, true);
        shell.now = noon;
        step(shell.runLoop.clockChanged, false, true);
        shell.now = noon + 3h;
        step(shell.runLoop.woke, false, true);
        shell.now = noon;
        step(shell.runLoop.clockChanged, false, true);
    }

    void step(const std::function<void()>& trigger, bool isNewDay, bool compared) {
        ++steps;
        shell.log.clear();
        shell.loaded.clear();
        trigger();
        if (shell.log.empty()) fault("no refresh");
        if (shell.labels[4].stringValue() != timeInNepal()) fault("another time than " + timeInNepal());
        const std::string before = std::exchange(date_, dateShown());
        if ((date_ != before) != isNewDay) fault(isNewDay ? "yesterday's date" : "another date within a day");
        if (compare_ == Compare::everyStep || compared) compareWithAFreshOne();
    }

    void compareWithAFreshOne() {
        ++comparisons;
        Shell fresh{shell.now};
        fresh.preferences.values = shell.preferences.values;
        fresh.delegate->awakeFromNib();
        if (shell.everything() != fresh.everything()) fault("a fresh one shows " + fresh.everything());
    }

    void fault(const std::string& what) {
        if (faults.size() < 10) faults.push_back(what + "; shown: " + shell.everything());
    }

    /// Year, month, day and weekday.
    [[nodiscard]] std::string dateShown() const {
        std::string text;
        for (int i = 0; i < 4; ++i) text += shell.labels[i].stringValue() + " ";
        return text;
    }

    [[nodiscard]] std::string timeInNepal() const {
        const auto sinceEpoch = shell.now.time_since_epoch() + std::chrono::hours{5} + std::chrono::minutes{45};
        const auto minutes = std::chrono::floor<std::chrono::minutes>(sinceEpoch).count();
        const auto minute = static_cast<std::size_t>((minutes % kMinutesADay + kMinutesADay) % kMinutesADay);
        constexpr std::array<const char*, 10> kDigits{"०", "१", "२", "३", "४", "५", "६", "७", "८", "९"};
        const auto two = [&](std::size_t number) {
            return std::string{kDigits.at(number / 10)} + kDigits.at(number % 10);
        };
        return two(minute / 60) + ":" + two(minute % 60);
    }

    std::chrono::sys_days day_;
    Compare compare_;
    std::string date_;
};

}  // namespace dinmala::test
