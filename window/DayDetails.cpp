#include "window/DayDetails.h"

#include <optional>
#include <utility>

#include "agenda/Sentences.h"
#include "i18n/Translation.h"
#include "panchanga/Panchanga.h"

namespace dinmala {

namespace {

using std::chrono::sys_days;

/// The reckoning that an edition was made by.
const panchanga::Reckoning& reckoningOf(const Edition& edition) {
    return edition.id == EditionId::first ? panchanga::kFirstReckoning : panchanga::kNepalReckoning;
}

/// The tithi of a number that runs at an instant, or just before or after the one that does: a published list may
/// have another than the reckoning.
std::optional<panchanga::Tithi> tithiNear(const panchanga::Panchanga& sky, double instant, int number) {
    constexpr double kInside = 0.01;  // days, far less than any tithi
    const panchanga::Tithi now = sky.tithiAt(instant);
    for (const panchanga::Tithi& one : {now, sky.tithiAt(now.end + kInside), sky.tithiAt(now.begin - kInside)}) {
        if (one.number == number) return one;
    }
    return std::nullopt;
}

class Details {
public:
    explicit Details(const Page& page)
        : page_(page), look_(page.look()), day_(page.chosen()), sky_(reckoningOf(page.edition())) {}

    [[nodiscard]] std::vector<DetailLine> lines() {
        const BsDate date = *page_.edition().calendar.toDate(day_);
        const unsigned weekDay = weekDayNumber(day_);
        add(tr("BS"), dateWords(date, Language::nepali, Digits::devanagari) + " · " +
                          dateWords(date, Language::english, Digits::western));
        add(tr("AD"), dateWords(day_, Language::english, Digits::western) + " · " +
                          dateWords(day_, Language::nepali, Digits::devanagari));
        add(tr("Weekday"), std::string{weekDayName(weekDay, Language::nepali)} + " · " +
                               std::string{weekDayName(weekDay, Language::english)});
        add(tr("From today"), distanceWords(day_ - page_.today(), look_.digits));
        const auto listed = page_.edition().almanac.day(date);
        if (listed) {
            for (const Event& event : listed->events) addEvent(event);
            addTithis(listed->tithis);
        }
        add(tr("Sunrise"), when(panchanga::sunrise(day_, sky_.place())));
        add(tr("Note"), inDigits(listed ? trustNote(*listed) : noListsNote(page_.edition(), date.year), look_.digits));
        return std::move(lines_);
    }

private:
    /// A label that the line before has too is not repeated; an empty text is no line.
    void add(const std::string& label, std::string text) {
        if (text.empty()) return;
        const bool again = label == label_;
        lines_.push_back({again ? std::string{} : label, std::move(text)});
        label_ = label;
    }

    void addTithis(const std::vector<Tithi>& tithis) {
        for (const Tithi& tithi : tithis) {
            if (tithi.number == 0) {
                add(tr("Tithi"), std::string{tithi.name});
                continue;
            }
            const std::string name = tithiWords(tithi, look_.language);
            const auto found = tithiNear(sky_, panchanga::sunrise(day_, sky_.place()), tithi.number);
            add(tr("Tithi"), found ? tr("{1}, from {2} to {3}", {name, when(found->begin), when(found->end)}) : name);
        }
    }

    void addEvent(const Event& event) {
        std::string text{eventName(event, look_.language)};
        if (event.holiday != Holiday::none) text += ", " + holidayWords(event.holiday);
        if (event.grade == Grade::near) text += ", " + tr("may be a day earlier or later");
        if (event.grade == Grade::open) text += ", " + tr("left open by the reckoning");
        add(tr("Festivals"), std::move(text));
    }

    /// "06:28", and before it the BS day where that is another: "6 Mangsir 21:40".
    [[nodiscard]] std::string when(double instant) const {
        const auto minute = panchanga::civilMinute(instant, sky_.place());
        const sys_days day{std::chrono::floor<std::chrono::days>(minute).time_since_epoch()};
        std::string text = clockText(minute);
        if (look_.digits == Digits::devanagari) text = inDevanagari(text);
        const auto date = page_.edition().calendar.toDate(day);
        if (day == day_ || !date) return text;
        return numberText(unsigned{date->day}, look_.digits) + " " +
               std::string{bsMonthName(date->month, look_.language)} + " " + text;
    }

    const Page& page_;
    PageLook look_;
    sys_days day_;
    panchanga::Panchanga sky_;
    std::vector<DetailLine> lines_;
    std::string label_;
};

}  // namespace

std::vector<DetailLine> dayDetails(const Page& page) { return Details{page}.lines(); }

std::string copyText(const std::vector<DetailLine>& details) {
    std::string text;
    for (const DetailLine& line : details) {
        text += (line.label.empty() ? "  " : line.label + ": ") + line.text + "\n";
    }
    return text;
}

}  // namespace dinmala
