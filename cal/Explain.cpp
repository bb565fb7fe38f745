#include "cal/Explain.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <string_view>

#include "agenda/Sentences.h"
#include "base/Names.h"
#include "base/Text.h"
#include "cal/Json.h"
#include "cal/Messages.h"
#include "generated/RuleTexts.h"
#include "i18n/Translation.h"
#include "panchanga/DaySky.h"

namespace dinmala::cal {

namespace {

using panchanga::Celebration;
using panchanga::DayPart;
using panchanga::Festivals;
using panchanga::SkyYear;

/// The rules as the program carries them; they were read when its years were made, so there is no error.
Festivals embeddedRules() {
    Festivals festivals;
    const auto read = [&festivals](auto operation, std::string_view text) {
        std::istringstream file{std::string{text}};
        if (const auto error = (festivals.*operation)(file, "almanac/rules")) complain(error->text);
    };
    read(&Festivals::read, kFestivalRules);
    read(&Festivals::readCorrections, kCorrectionRules);
    read(&Festivals::readHolidays, kHolidayRules);
    return festivals;
}

/// "2026-11-23 06:28", Nepal's time to the nearest minute.
std::string instantText(double jd, const panchanga::Place& place) {
    const auto minute = panchanga::civilMinute(jd, place);
    return dateText(std::chrono::year_month_day{std::chrono::floor<std::chrono::days>(minute)}) + " " +
           clockText(minute);
}

/// "12 min", "3 h 40 min"
std::string lengthText(double minutes) {
    const auto whole = static_cast<std::uint64_t>(std::max(0.0, std::floor(minutes)));
    if (whole == 0) return tr("less than a minute");
    if (whole < 120) return tr("{1} min", {std::to_string(whole)});
    return tr("{1} h {2} min", {std::to_string(whole / 60), std::to_string(whole % 60)});
}

std::string gradeText(Grade grade) {
    switch (grade) {
        case Grade::published:
            return tr("published");
        case Grade::sure:
            return tr("sure");
        case Grade::near:
            return tr("near");
        case Grade::open:
            return tr("open");
    }
    return {};
}

std::string partText(DayPart part) {
    switch (part) {
        case DayPart::sunrise:
            return tr("sunrise");
        case DayPart::midday:
            return tr("midday");
        case DayPart::afternoon:
            return tr("afternoon");
        case DayPart::evening:
            return tr("evening");
        case DayPart::moonrise:
            return tr("moonrise");
        case DayPart::midnight:
            return tr("midnight");
    }
    return {};
}

std::string_view trustName(panchanga::Trust trust) {
    switch (trust) {
        case panchanga::Trust::unknown:
            return "unknown";
        case panchanga::Trust::inferred:
            return "inferred";
        case panchanga::Trust::named:
            return "named";
        case panchanga::Trust::known:
            return "known";
    }
    return {};
}

/// What decides the day of a festival: by a tithi, by an instant, or by the date alone.
enum class Decider { tithi, instant, date };
Decider deciderOf(const Celebration& one) {
    return one.tithi.number != 0 ? Decider::tithi : one.moment != 0.0 ? Decider::instant : Decider::date;
}

/// A day with all that decided it.
class Reasons {
public:
    Reasons(const Edition& edition, const AlmanacDay& day)
        : edition_(edition),
          day_(day),
          festivals_(embeddedRules()),
          panchanga_(panchanga::kNepalReckoning),
          sky_(int{day.date.year}, edition.calendar, panchanga_),
          reasons_(panchanga::reasonsOf(day.day, sky_, festivals_)) {}

    [[nodiscard]] std::string text() const {
        std::string text = dateReasons() + tithiReasons();
        for (const Event& event : day_.events) text += eventReasons(event);
        return text;
    }

    [[nodiscard]] Json json() const {
        const auto numbers = edition_.almanac.numbers(day_.date.year);
        const panchanga::NamedTithi& tithi = reasons_.sky.tithi;
        Json json{{"date",
                   {{"published", published()},
                    {"grade", gradeName(dateGrade())},
                    {"sankranti", at(reasons_.month.sankranti)},
                    {"reckonedMonthStart", dateText(std::chrono::year_month_day{reasons_.month.first})},
                    {"marginMinutes", rounded(reasons_.month.margin())},
                    {"yearFromFile", fromFile()}}},
                  {"sunrise", at(reasons_.sky.sunrise)},
                  {"sunset", at(reasons_.sky.sunset)},
                  {"tithi", tithiJson(tithi.tithi)}};
        json["tithi"]["marginMinutes"] = rounded(reasons_.sky.margin);
        json["tithi"]["grade"] = day_.tithis.empty() ? Json{} : Json(gradeName(day_.tithis.front().grade));
        json["tithi"]["skipped"] = reasons_.sky.skipped ? tithiJson(reasons_.sky.skipped->tithi) : Json{};
        json["events"] = Json::array();
        for (const Event& event : day_.events) json["events"].push_back(eventJson(event));
        return json;
    }

private:
    [[nodiscard]] std::string at(double jd) const { return instantText(jd, panchanga_.place()); }
    /// The same for people: the time alone where it is of the day itself.
    [[nodiscard]] std::string when(double jd) const {
        std::string text = at(jd);
        const std::string day = dateText(std::chrono::year_month_day{day_.day}) + " ";
        return text.starts_with(day) ? text.substr(day.size()) : text;
    }
    static double rounded(double minutes) { return std::round(minutes * 10.0) / 10.0; }

    [[nodiscard]] bool published() const { return edition_.isPublished(day_.date.year); }

    [[nodiscard]] Grade dateGrade() const {
        const auto year = edition_.almanac.numbers(day_.date.year);
        if (!year) return Grade::published;
        const auto found = std::find_if(year->days.begin(), year->days.end(),
                                        [this](const YearDay& one) { return one.date == day_.date; });
        return found == year->days.end() ? Grade::published : found->dateGrade;
    }

    /// Whether the year is another than the one that the program carries.
    [[nodiscard]] bool fromFile() const {
        return edition_.almanac.numbers(day_.date.year) != currentEdition().almanac.numbers(day_.date.year);
    }

    [[nodiscard]] const Celebration* celebrationOf(std::uint16_t id) const {
        const auto found = std::find_if(reasons_.celebrations.begin(), reasons_.celebrations.end(),
                                        [id](const Celebration& one) { return one.festival->id == id; });
        return found == reasons_.celebrations.end() ? nullptr : &*found;
    }

    [[nodiscard]] std::string dateReasons() const {
        const std::string year = std::to_string(int{day_.date.year});
        std::string text;
        if (fromFile()) text += tr("The year comes from a file; what it lists holds as it stands there.") + "\n";
        text += (published() ? tr("The date: Nepal has published the months of BS {1}.", {year})
                             : tr("The date: reckoned ({1}); Nepal has not published BS {2}.",
                                  {gradeText(dateGrade()), year})) +
                "\n";
        const panchanga::SolarMonth& month = reasons_.month;
        text += "  " + tr("The Sun enters the month's sign on {1}.", {when(month.sankranti)}) + "\n";
        text += "  " + tr("The month would begin on another day if that moved by {1}.", {lengthText(month.margin())}) +
                "\n";
        const BsDate first{day_.date.year, day_.date.month, BsDay{1}};
        if (const auto begin = edition_.calendar.toDays(first); begin && *begin != month.first) {
            text += "  " +
                    tr("By the reckoning alone the month of this day begins on {1}.",
                       {dateText(std::chrono::year_month_day{month.first})}) +
                    "\n";
        }
        return text;
    }

    [[nodiscard]] std::string tithiReasons() const {
        const panchanga::DaySky& sky = reasons_.sky;
        const panchanga::Tithi& tithi = sky.tithi.tithi;
        std::string text = tr("The tithi: {1} ({2}) from {3} to {4}, over the sunrise of {5}.",
                              {tithiTitle(static_cast<unsigned>(tithi.number)), std::to_string(tithi.number),
                               when(tithi.begin), when(tithi.end), when(sky.sunrise)}) +
                           "\n";
        if (sky.skipped) {
            const panchanga::Tithi& skipped = sky.skipped->tithi;
            text += "  " +
                    tr("{1} ({2}) from {3} to {4} has no sunrise.",
                       {tithiTitle(static_cast<unsigned>(skipped.number)), std::to_string(skipped.number),
                        when(skipped.begin), when(skipped.end)}) +
                    "\n";
        }
        const Grade grade = day_.tithis.empty() ? Grade::open : day_.tithis.front().grade;
        text += "  " +
                tr("Grade: {1}. Their ends may move by {2} before this changes.",
                   {gradeText(grade), lengthText(sky.margin)}) +
                "\n";
        return text;
    }

    [[nodiscard]] std::string eventReasons(const Event& event) const {
        std::string text = std::string{event.name} + " (" + std::to_string(event.id) + ")";
        if (event.holiday != Holiday::none) text += ", " + holidayWords(event.holiday);
        text += "\n";
        const auto line = [&text](const std::string& sentence) { text += "  " + sentence + "\n"; };
        const Celebration* one = celebrationOf(event.id);
        if (one == nullptr) {
            line(tr("Listed by the year's file; the rules do not put it here."));
            line(tr("Grade: {1}.", {gradeText(event.grade)}));
            return text;
        }
        line(tr("Rule: {1} ({2}; {3})", {one->festival->text, trustName(one->festival->trust), one->festival->source}));
        switch (deciderOf(*one)) {
            case Decider::tithi:
                line(tr("Decided by {1}, {2}, in {3} from {4} to {5}.",
                        {partText(one->part), when(one->moment), tithiTitle(static_cast<unsigned>(one->tithi.number)),
                         when(one->tithi.begin), when(one->tithi.end)}));
                break;
            case Decider::instant:
                line(tr("Decided by the Moon's entry, {1}.", {when(one->moment)}));
                break;
            case Decider::date:
                line(tr("Decided by the date alone."));
                break;
        }
        if (one->festival->trust == panchanga::Trust::inferred && one->correction == nullptr) {
            line(tr("The rule is inferred, so the day is near at best."));
        }
        if (one->twoDays) line(tr("Two days qualify, or none, and the rule does not say which."));
        if (one->unsettled) line(tr("It lies between an extra month and a lost one, so its month is not settled."));
        if (one->reckonedDay) {
            line(tr("The rule alone gives {1}.", {dateText(std::chrono::year_month_day{*one->reckonedDay})}));
        }
        if (one->correction != nullptr) line(tr("A dated source has this day: {1}", {one->correction->source}));
        if (deciderOf(*one) == Decider::date || one->correction != nullptr) {
            line(tr("Grade: {1}.", {gradeText(event.grade)}));
        } else {
            line(tr("Grade: {1}. It may move by {2} before the day changes.",
                    {gradeText(event.grade),
                     one->margin >= kFarMinutes ? tr("3 hours or more") : lengthText(one->margin)}));
        }
        return text;
    }

    [[nodiscard]] Json tithiJson(const panchanga::Tithi& tithi) const {
        return {{"number", tithi.number},
                {"name", tithiTitle(static_cast<unsigned>(tithi.number))},
                {"begin", at(tithi.begin)},
                {"end", at(tithi.end)}};
    }

    [[nodiscard]] Json eventJson(const Event& event) const {
        Json json{{"id", event.id},
                  {"name", event.name},
                  {"holiday", holidayName(event.holiday)},
                  {"grade", gradeName(event.grade)},
                  {"rule", nullptr}};
        const Celebration* one = celebrationOf(event.id);
        if (one == nullptr) return json;
        const Decider decider = deciderOf(*one);
        json["rule"] = one->festival->text;
        json["trust"] = trustName(one->festival->trust);
        json["source"] = one->festival->source;
        json["part"] = decider == Decider::tithi ? Json(partName(one->part)) : Json{};
        json["moment"] = decider == Decider::date ? Json{} : Json(at(one->moment));
        json["tithi"] = decider == Decider::tithi ? tithiJson(one->tithi) : Json{};
        json["marginMinutes"] = decider == Decider::date ? Json{} : Json(rounded(one->margin));
        json["correction"] = one->correction != nullptr ? Json(one->correction->source) : Json{};
        json["reckonedDay"] =
            one->reckonedDay ? Json(dateText(std::chrono::year_month_day{*one->reckonedDay})) : Json{};
        return json;
    }

    static constexpr double kFarMinutes = 180.0;  // where Celebration stops counting

    const Edition& edition_;
    const AlmanacDay& day_;
    Festivals festivals_;
    panchanga::Panchanga panchanga_;
    SkyYear sky_;
    panchanga::DayReasons reasons_;
};

/// What the first edition lists on a day.
std::string listedText(const AlmanacDay& day) {
    std::string text = tr("The first edition lists what was first published; reasons were not kept.") + "\n";
    for (const Tithi& tithi : day.tithis) text.append(tithi.name).append("\n");
    for (const Event& event : day.events) {
        text.append(event.name).append(" (").append(std::to_string(event.id)).append(")\n");
    }
    return text;
}

}  // namespace

std::string explanation(const Edition& edition, const AlmanacDay& day, const Settings& settings) {
    const bool graded = edition.almanac.graded();
    if (settings.json) {
        Json json = jsonOf(day.date, day.day);
        json["edition"] = editionName(edition.id);
        if (graded) {
            json.update(Reasons{edition, day}.json());
        } else {
            addDay(json, day, graded, true, true);
        }
        return printed(json);
    }
    const std::string head = dateText(day.date, settings.digits) + "  " +
                             dateText(std::chrono::year_month_day{day.day}) + "  " +
                             std::string{weekDayName(weekDayNumber(day.day), settings.language)} + "\n";
    return head + (graded ? Reasons{edition, day}.text() : listedText(day));
}

}  // namespace dinmala::cal
