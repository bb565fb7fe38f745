// Notices of festivals: what was chosen, what was told, and the sentences.
#include <algorithm>
#include <charconv>
#include <utility>

#include "agenda/FestivalNotice.h"
#include "agenda/PageLook.h"
#include "agenda/Sentences.h"
#include "app/AppDelegate.h"
#include "base/DateText.h"
#include "base/Names.h"
#include "base/Text.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

constexpr std::string_view kWhenKey = "tell";
constexpr std::string_view kOfKey = "tell_of";

// The lines of the text that is kept: "told 2026-11-23" for a day, "left 10" for a festival.
constexpr std::string_view kTold = "told ";
constexpr std::string_view kLeft = "left ";

/// More days than a year has: so many are not told of twice, whatever the clock is set to.
constexpr std::size_t kMostDays = 400;

constexpr std::string_view kShow = "default";
constexpr std::string_view kLeave = "leave";

template <typename Handle>
void forEachLine(std::string_view text, Handle&& handle) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        handle(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

std::string toldLine(std::chrono::sys_days day) { return std::string{kTold} + dateText(day); }
std::string leftLine(std::uint16_t id) { return std::string{kLeft} + std::to_string(id); }

template <typename Value>
void addOnce(std::vector<Value>& values, const Value& value) {
    if (std::find(values.begin(), values.end(), value) == values.end()) values.push_back(value);
}

/// Adds what a kept text says. Lines that say something else are nobody's business here.
void addTold(std::string_view text, ToldFestivals& told) {
    forEachLine(text, [&](std::string_view line) {
        if (line.starts_with(kTold)) {
            const auto date = readDate(line.substr(kTold.size()));
            if (!date || !date->year) return;
            const std::chrono::year_month_day day{std::chrono::year{*date->year},
                                                  std::chrono::month(static_cast<unsigned>(date->month)),
                                                  std::chrono::day(static_cast<unsigned>(date->day))};
            if (day.ok()) addOnce(told.days, std::chrono::sys_days{day});
        } else if (line.starts_with(kLeft)) {
            const std::string_view number = line.substr(kLeft.size());
            std::uint16_t id = 0;
            const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), id);
            if (error == std::errc{} && end == number.data() + number.size()) addOnce(told.left, id);
        }
    });
}

/// The text with a line added, and without the oldest of too many days.
std::string withLine(const std::string& text, const std::string& line) {
    std::string result = text;
    if (!result.empty() && result.back() != '\n') result += '\n';
    result += line + '\n';
    std::size_t count = 0;
    forEachLine(result, [&](std::string_view one) { count += one.starts_with(kTold) ? 1U : 0U; });
    for (; count > kMostDays; --count) {
        const std::size_t at = result.starts_with(kTold) ? 0 : result.find("\n" + std::string{kTold}) + 1;
        result.erase(at, result.find('\n', at) - at + 1);
    }
    return result;
}

/// The text without the lines that begin so.
std::string withoutLines(const std::string& text, std::string_view begin) {
    std::string result;
    forEachLine(text, [&](std::string_view line) {
        if (!line.starts_with(begin)) result.append(line) += '\n';
    });
    return result;
}

std::string dateLine(const AlmanacDay& day, PageLook look) {
    return std::string{weekDayName(weekDayNumber(day.day), look.language)} + " " +
           dateWords(day.date, look.language, look.digits);
}

std::string names(const AlmanacDay& day, std::size_t from, Language language) {
    std::vector<std::string_view> list;
    for (std::size_t i = from; i < day.events.size(); ++i) list.push_back(eventName(day.events[i], language));
    return joined(list, "/ ");
}

Notice sentencesOf(const FestivalNotice& due, PageLook look) {
    Notice notice;
    const AlmanacDay& first = due.days.front();
    const std::string name{eventName(first.events.front(), look.language)};
    notice.title = first.day == due.today ? tr("Today: {1}", {name}) : tr("Tomorrow: {1}", {name});
    std::vector<std::string> lines{dateLine(first, look)};
    if (first.events.size() > 1) lines.push_back(names(first, 1, look.language));
    if (const std::string words = holidayWords(first.holiday()); !words.empty()) lines.push_back(words);
    const auto mostDoubtful = std::max_element(first.events.begin(), first.events.end(),
                                               [](const Event& a, const Event& b) { return a.grade < b.grade; });
    if (const std::string note = trustNote(first, *mostDoubtful, look.language); !note.empty()) lines.push_back(note);
    if (due.days.size() > 1) lines.push_back(tr("Tomorrow: {1}", {names(due.days.back(), 0, look.language)}));
    notice.text = joined(lines, "\n");
    return notice;
}

}  // namespace

TellChoice AppDelegate::tellChoice() const {
    const std::string when = prefs_->textForKey(kWhenKey);
    return {when == "evening"   ? TellWhen::evening
            : when == "morning" ? TellWhen::morning
                                : TellWhen::never,
            prefs_->textForKey(kOfKey) == "all" ? TellOf::all : TellOf::holidays};
}

void AppDelegate::chooseTelling(std::string_view value, std::string_view key) {
    prefs_->reload();
    prefs_->setTextForKey(value, key);
    prefs_->synchronize();
    updateData();
}

void AppDelegate::tellNever(Sender) { chooseTelling("never", kWhenKey); }
void AppDelegate::tellInEvening(Sender) { chooseTelling("evening", kWhenKey); }
void AppDelegate::tellInMorning(Sender) { chooseTelling("morning", kWhenKey); }
void AppDelegate::tellOfHolidays(Sender) { chooseTelling("holidays", kOfKey); }
void AppDelegate::tellOfAll(Sender) { chooseTelling("all", kOfKey); }

void AppDelegate::tellOfLeft(Sender) {
    keepTold([](const std::string& text) { return withoutLines(text, kLeft); });
    told_.left.clear();
    updateData();
}

void AppDelegate::beginTelling() {
    if (outlets_.tellMenuItem != nullptr) outlets_.tellMenuItem->setHidden(platform_.notifier == nullptr);
    if (platform_.notifier != nullptr && platform_.changeState) {
        // What cannot be read is told of when something is to be kept.
        (void)platform_.changeState([this](const std::string& text) {
            addTold(text, told_);
            return std::nullopt;
        });
    }
}

void AppDelegate::showTelling() {
    const TellChoice choice = tellChoice();
    mark(outlets_.tellNeverMenuItem, choice.when == TellWhen::never);
    mark(outlets_.tellEveningMenuItem, choice.when == TellWhen::evening);
    mark(outlets_.tellMorningMenuItem, choice.when == TellWhen::morning);
    mark(outlets_.tellHolidaysMenuItem, choice.of == TellOf::holidays);
    mark(outlets_.tellAllMenuItem, choice.of == TellOf::all);
    if (outlets_.tellLeftMenuItem != nullptr) outlets_.tellLeftMenuItem->setHidden(told_.left.empty());
}

void AppDelegate::keepTold(const ChangeText& change) {
    std::string why;
    if (platform_.changeState) {
        why = platform_.changeState(change);
    } else {
        (void)change("");
    }
    if (why.empty() || toldIsLost_ || !platform_.tell) return;
    toldIsLost_ = true;
    platform_.tell(
        tr("what festivals you were told of cannot be kept; after a restart you may hear of one again: {1}", {why}));
}

void AppDelegate::tellOfFestivals(Moment now) {
    const TellChoice choice = tellChoice();
    if (choice.when == TellWhen::never || platform_.notifier == nullptr || !platform_.edition) return;
    if (!isRunning_ || !platform_.notifier->ready()) return;
    const auto decide = [&](const ToldFestivals& told) {
        return dueNotice(platform_.edition(editionId()), now, machine(), choice, told);
    };
    // Left out or not, the kept text says: another Dinmala of the user's may have been told to leave a festival, or to
    // take it back, or may have told it.
    std::optional<FestivalNotice> due = decide({told_.days, {}});
    if (!due) return;
    // Kept before it is told: whoever is killed in between tells it never rather than twice.
    keepTold([&](const std::string& text) -> std::optional<std::string> {
        // A text that could not be read, or not be kept from here, is no news of what was left out.
        if (!text.empty() && !toldIsLost_) told_.left.clear();
        addTold(text, told_);
        due = decide(told_);
        if (!due) return std::nullopt;
        std::string changed = text;
        for (const AlmanacDay& day : due->days) {
            addOnce(told_.days, day.day);
            changed = withLine(changed, toldLine(day.day));
        }
        return changed;
    });
    if (due) tell(*due);
}

void AppDelegate::tell(const FestivalNotice& due) {
    Notice notice = sentencesOf(due, keptLook(prefs_->textForKey(kLanguageKey), prefs_->textForKey(kDigitsKey)));
    const AlmanacDay& first = due.days.front();
    const Event event = first.events.front();
    if (platform_.showDay) notice.actions.push_back({std::string{kShow}, tr("Show the day")});
    notice.actions.push_back({std::string{kLeave}, tr("Not again for this festival")});

    std::vector<std::chrono::sys_days> days;
    for (const AlmanacDay& day : due.days) days.push_back(day.day);
    const auto taken = [this, days](bool isTaken) {
        if (isTaken) return;
        const auto isOne = [&](std::chrono::sys_days day) {
            return std::find(days.begin(), days.end(), day) != days.end();
        };
        std::erase_if(told_.days, isOne);
        keepTold([&](const std::string& text) {
            std::string changed = text;
            for (const std::chrono::sys_days day : days) changed = withoutLines(changed, toldLine(day));
            return changed;
        });
    };
    const auto chosen = [this, day = first.day, id = event.id](const std::string& key, const std::string& token) {
        if (key == kShow && platform_.showDay) platform_.showDay(day, token);
        if (key != kLeave) return;
        addOnce(told_.left, id);
        keepTold([&](const std::string& text) { return withLine(text, leftLine(id)); });
        showTelling();
    };
    platform_.notifier->show(notice, taken, chosen);
}

}  // namespace dinmala
