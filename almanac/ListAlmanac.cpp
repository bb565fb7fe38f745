#include "almanac/ListAlmanac.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "base/Fields.h"
#include "base/Lines.h"
#include "panchanga/Panchanga.h"

namespace dinmala {

namespace {

/// The tithi within its half that each id of tithi_names.txt stands for, the first of two that are joined; 15
/// and 30 are the full and the new moon, 0 is no tithi (दिनमाला).
constexpr auto kNumberOfId = [] {
    std::array<std::uint8_t, 62> numbers{};
    for (const auto& [id, number] : std::initializer_list<std::pair<std::size_t, std::uint8_t>>{
             {1, 11}, {2, 12},  {3, 6},   {4, 4},   {5, 6},   {6, 7},   {7, 8},   {8, 13},  {9, 5},
             {10, 8}, {11, 9},  {12, 10}, {13, 11}, {14, 12}, {15, 13}, {16, 13}, {17, 14}, {18, 30},
             {19, 1}, {20, 2},  {21, 3},  {22, 4},  {23, 7},  {24, 8},  {25, 9},  {26, 15}, {27, 5},
             {28, 8}, {29, 30}, {30, 2},  {32, 5},  {33, 13}, {34, 13}, {35, 13}, {36, 1},  {37, 9},
             {39, 3}, {41, 11}, {47, 3},  {48, 1},  {49, 1},  {50, 30}, {51, 12}, {52, 14}, {53, 9},
             {54, 3}, {55, 7},  {56, 8},  {57, 9},  {58, 6},  {59, 9},  {60, 9},  {61, 14}}) {
        numbers[id] = number;
    }
    return numbers;
}();

/// How far two tithis are apart on the circle of thirty.
int distance(int a, int b) {
    const int way = ((a - b) % 30 + 30) % 30;
    return std::min(way, 30 - way);
}

/// The tithi, 1 to 30, that the name of an id stands for on a day whose sunrise has `running`.
std::uint8_t tithiNumber(int id, int running) {
    const int number =
        static_cast<std::size_t>(id) < kNumberOfId.size() ? kNumberOfId[static_cast<std::size_t>(id)] : 0;
    if (number == 0 || number >= 15) return static_cast<std::uint8_t>(number);
    return static_cast<std::uint8_t>(distance(number, running) <= distance(number + 15, running) ? number
                                                                                                 : number + 15);
}

/// An id of a list as a number; 0 for one of another form.
std::uint16_t idOf(std::string_view text) {
    const auto id = fixedNumber(text, text.size());
    return id && *id <= 0xFFFF && text.front() != '0' ? static_cast<std::uint16_t>(*id) : std::uint16_t{0};
}

class ListSource : public AlmanacSource {
public:
    ListSource(const EventTexts& events, const TithiTexts& tithis, const BsCalendar& calendar)
        : calendar_(calendar),
          eventNames_(sharedTextMap(events.names, embeddedEventTexts().names)),
          eventLists_(sharedTextMap(events.years, embeddedEventTexts().years)),
          tithiNames_(sharedTextMap(tithis.names, embeddedTithiTexts().names)),
          tithiLists_(sharedTextMap(tithis.years, embeddedTithiTexts().years)) {}

    [[nodiscard]] bool graded() const override { return false; }

    [[nodiscard]] std::vector<BsYear> years() const override {
        std::set<BsYear> years;
        for (const TextMap* lists : {eventLists_.get(), tithiLists_.get()}) {
            for (const auto& [key, list] : *lists) {
                if (const auto year = fixedNumber(key, 4)) years.insert(BsYear{*year});
            }
        }
        return {years.begin(), years.end()};
    }

    [[nodiscard]] std::optional<AlmanacDay> day(const BsDate& date) const override {
        const auto civil = calendar_.toDays(date);
        const Lists lists = listsOf(date.year);
        if (!civil || !lists.any()) return std::nullopt;
        AlmanacDay found{date, *civil, Grade::published, {}, {}};
        forEachToken(lists.tithis, kDayMonthLength, [&](const YearToken& token) {
            if (dateOf(token, date.year) == date) addTithi(found, token.id);
        });
        forEachToken(lists.events, kDayMonthLength, [&](const YearToken& token) {
            if (dateOf(token, date.year) == date) addEvent(found, token.id);
        });
        return found;
    }

    [[nodiscard]] std::vector<AlmanacDay> year(BsYear year) const override {
        std::vector<AlmanacDay> days;
        const Lists lists = listsOf(year);
        if (!lists.any()) return days;
        BsDate date{year, BsMonth{1}, BsDay{1}};
        const auto first = calendar_.toDays(date);
        const unsigned count = calendar_.daysIn(year);
        if (!first || count == 0) return days;
        for (unsigned i = 0; i < count; ++i) {
            const std::chrono::sys_days civil = *first + std::chrono::days{i};
            days.push_back({*calendar_.toDate(civil), civil, Grade::published, {}, {}});
        }
        const auto place = [&](const YearToken& token) -> AlmanacDay* {
            const auto civil = calendar_.toDays(dateOf(token, year));
            return civil ? &days[static_cast<std::size_t>((*civil - *first).count())] : nullptr;
        };
        forEachToken(lists.tithis, kDayMonthLength, [&](const YearToken& token) {
            if (AlmanacDay* day = place(token)) addTithi(*day, token.id);
        });
        forEachToken(lists.events, kDayMonthLength, [&](const YearToken& token) {
            if (AlmanacDay* day = place(token)) addEvent(*day, token.id);
        });
        return days;
    }

    [[nodiscard]] std::optional<YearAlmanac> numbers(BsYear) const override { return std::nullopt; }

    [[nodiscard]] std::string_view eventName(std::uint16_t id) const override {
        const auto name = eventNames_->find(std::to_string(id));
        return name == eventNames_->end() ? std::string_view{} : name->second;
    }

private:
    struct Lists {
        std::string_view tithis, events;
        [[nodiscard]] bool any() const { return !tithis.empty() || !events.empty(); }
    };

    [[nodiscard]] Lists listsOf(BsYear year) const {
        const auto listIn = [key = std::to_string(int{year})](const TextMap& lists) {
            const auto list = lists.find(key);
            return list == lists.end() ? std::string_view{} : list->second;
        };
        return {listIn(*tithiLists_), listIn(*eventLists_)};
    }

    /// The date of a token; one that no calendar has for a head of another form.
    static BsDate dateOf(const YearToken& token, BsYear year) {
        const auto day = fixedNumber(token.head.substr(0, 2), 2);
        const auto month = fixedNumber(token.head.substr(2), 2);
        if (!day || !month) return {};
        return {year, BsMonth{static_cast<unsigned>(*month)}, BsDay{static_cast<unsigned>(*day)}};
    }

    void addTithi(AlmanacDay& day, std::string_view id) const {
        const auto name = tithiNames_->find(id);
        if (name == tithiNames_->end()) return;
        const int running = panchanga_.dayTithi(day.day).tithi;
        day.tithis.push_back({tithiNumber(idOf(id), running), name->second, Grade::published});
    }

    void addEvent(AlmanacDay& day, std::string_view id) const {
        const auto name = eventNames_->find(id);
        if (name != eventNames_->end()) {
            day.events.push_back({idOf(id), name->second, Holiday::none, Grade::published});
        }
    }

    BsCalendar calendar_;
    std::shared_ptr<const TextMap> eventNames_;
    std::shared_ptr<const TextMap> eventLists_;
    std::shared_ptr<const TextMap> tithiNames_;
    std::shared_ptr<const TextMap> tithiLists_;
    panchanga::Panchanga panchanga_{panchanga::kFirstReckoning};
};

}  // namespace

Almanac almanacOfLists(const EventTexts& events, const TithiTexts& tithis, const BsCalendar& calendar) {
    return Almanac{std::make_shared<ListSource>(events, tithis, calendar)};
}

}  // namespace dinmala
