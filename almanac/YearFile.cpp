#include "almanac/YearFile.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/DateText.h"
#include "base/Lines.h"
#include "base/Names.h"
#include "base/Text.h"

namespace dinmala {

namespace {

constexpr std::string_view kGradeMarks = "! ~?";    // by Grade; a blank stands for none
constexpr std::string_view kHolidayMarks = " OLH";  // by Holiday

/// Takes a mark off the end of a word.
template <typename Enum>
Enum takeMark(std::string_view& word, std::string_view marks, Enum without) {
    if (word.empty() || word.back() == ' ') return without;
    const std::size_t place = marks.find(word.back());
    if (place == std::string_view::npos) return without;
    word.remove_suffix(1);
    return static_cast<Enum>(place);
}

std::optional<unsigned> wholeNumber(std::string_view text, unsigned most) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool all = error == std::errc{} && end == text.data() + text.size() && text.front() != '0';
    return all && value <= most ? std::optional{value} : std::nullopt;
}

/// A date of the form in which files have them, "2083-08-07".
std::optional<DateFields> fileDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto date = readDate(text);
    return date ? std::optional{*date} : std::nullopt;
}

/// Where the first byte stands that belongs to no UTF-8 character; npos for none.
std::size_t notUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = characterLength(text.substr(at));
        if (length == 0) return at;
        at += length;
    }
    return std::string_view::npos;
}

std::string quoted(std::string_view text) {
    std::string shown = "'";
    for (const char c : text.substr(0, 40)) shown += c >= ' ' && c < '\x7F' ? c : '?';
    return shown + "'";
}

/// Reads one line after the other into a year.
class YearReader {
public:
    explicit YearReader(const std::function<bool(std::uint16_t)>& knows) : knows_(knows) {}

    /// What is wrong with the line; empty for nothing.
    std::string read(std::string_view line) {
        const std::vector<std::string_view> words = wordsOf(line);
        return year_.year.ok() ? readDay(words) : readHead(words);
    }

    /// What is wrong with the whole.
    std::string finish() {
        if (!year_.year.ok()) return "has no line such as 'year 2084 published'";
        if (year_.days.empty()) return "has no day";
        const BsDate& last = year_.days.back().date;
        if (last.month != BsMonth{12}) return "ends with " + dateText(last) + ", before month 12";
        if (std::string why = wrongMonthEnd(last); !why.empty()) return why;
        if (year_.days.size() < 364 || year_.days.size() > 366) {
            return "has a year of " + std::to_string(year_.days.size()) + " days";
        }
        return {};
    }

    YearAlmanac take() { return std::move(year_); }

private:
    std::string readHead(const std::vector<std::string_view>& words) {
        const auto year = words.size() == 3 && words[0] == "year" ? fixedNumber(words[1], 4) : std::nullopt;
        const bool published = words.size() == 3 && words[2] == "published";
        if (!year || *year == 0 || (!published && words[2] != "computed")) {
            return "does not begin with a line such as 'year 2084 published'";
        }
        year_.year = BsYear{*year};
        year_.published = published;
        return {};
    }

    std::string readDay(const std::vector<std::string_view>& words) {
        if (words.size() < 3) return "is no BS date, AD date and tithi";
        YearDay day;
        std::string why = readDates(words[0], words[1], day);
        if (why.empty()) why = readTithi(words[2], day);
        for (std::size_t i = 3; why.empty() && i < words.size(); ++i) why = readEvent(words[i], day);
        if (why.empty()) year_.days.push_back(std::move(day));
        return why;
    }

    std::string readDates(std::string_view bsWord, std::string_view adWord, YearDay& day) {
        std::string_view bsText = bsWord;
        day.dateGrade = takeMark(bsText, kGradeMarks, year_.published ? Grade::published : Grade::sure);
        const auto bs = fileDate(bsText);
        const auto ad = fileDate(adWord);
        if (!bs) return quoted(bsWord) + " is no BS date such as 2084-01-31";
        if (!ad) return quoted(adWord) + " is no AD date such as 2027-04-14";
        const std::chrono::year_month_day adDate{std::chrono::year{*ad->year},
                                                 std::chrono::month(unsignedOf(ad->month)),
                                                 std::chrono::day(unsignedOf(ad->day))};
        if (!adDate.ok()) return "there is no AD date " + std::string{adWord};
        day.date = bsDate(*bs->year, unsignedOf(bs->month), unsignedOf(bs->day));
        day.day = adDate;
        if (day.date.year != year_.year) return std::string{bsText} + " is not of the year " + yearText();
        if (year_.days.empty()) {
            if (day.date != bsDate(int{year_.year}, 1, 1)) return "begins with " + std::string{bsText};
            return {};
        }
        const YearDay& before = year_.days.back();
        const BsDate next{before.date.year, before.date.month, BsDay{unsigned{before.date.day} + 1}};
        if (day.date != next) {
            const BsDate first = BsDate{before.date.year, before.date.month, BsDay{1}} + std::chrono::months{1};
            if (day.date != first) {
                return std::string{bsText} + " does not follow " + dateText(before.date);
            }
            if (std::string why = wrongMonthEnd(before.date); !why.empty()) return why;
        } else if (unsigned{next.day} > kLongestMonth) {
            return "gives month " + std::to_string(unsigned{next.month}) + " more than 32 days";
        }
        if (day.day != before.day + std::chrono::days{1}) return std::string{adWord} + " is not the next AD day";
        return {};
    }

    std::string readTithi(std::string_view word, YearDay& day) {
        std::string_view text = word;
        day.tithiGrade = takeMark(text, kGradeMarks, Grade::sure);
        const std::size_t plus = text.find('+');
        const auto tithi = wholeNumber(text.substr(0, plus), 30);
        if (!tithi) return quoted(word) + " is no tithi from 1 to 30";
        day.tithi = static_cast<std::uint8_t>(*tithi);
        if (plus != std::string_view::npos) {
            const auto skipped = wholeNumber(text.substr(plus + 1), 30);
            if (!skipped || *skipped != *tithi % 30 + 1) return quoted(word) + " is no tithi with the next one";
            day.skipped = static_cast<std::uint8_t>(*skipped);
        }
        if (year_.days.empty()) return {};
        const YearDay& before = year_.days.back();
        const unsigned step = (day.tithi + 30u - before.tithi) % 30;
        // A tithi runs at two sunrises at most.
        const bool isThird = year_.days.size() > 1 && year_.days.end()[-2].tithi == day.tithi;
        const bool mayStay = before.skipped == 0 && !isThird;
        if (step != (before.skipped != 0 ? 2u : 1u) && !(step == 0 && mayStay)) {
            return "tithi " + std::string{text} + " does not follow " + std::to_string(before.tithi) +
                   (before.skipped != 0 ? "+" + std::to_string(before.skipped) : "");
        }
        return {};
    }

    std::string readEvent(std::string_view word, YearDay& day) const {
        std::string_view text = word;
        EventEntry event;
        event.grade = takeMark(text, kGradeMarks, Grade::sure);
        event.holiday = takeMark(text, kHolidayMarks, Holiday::none);
        const auto id = text.empty() ? std::nullopt : wholeNumber(text, kLongestEventId);
        if (!id) return quoted(word) + " is no event id";
        event.id = static_cast<std::uint16_t>(*id);
        if (knows_ && !knows_(event.id)) return "there is no event " + std::to_string(event.id);
        const bool twice = std::any_of(day.events.begin(), day.events.end(),
                                       [&](const EventEntry& one) { return one.id == event.id; });
        if (twice) return "event " + std::to_string(event.id) + " stands twice";
        day.events.push_back(event);
        return {};
    }

    /// What is wrong with a month that ends on this date.
    static std::string wrongMonthEnd(const BsDate& last) {
        const unsigned days = unsigned{last.day};
        if (days >= kShortestMonth && days <= kLongestMonth) return {};
        return "gives month " + std::to_string(unsigned{last.month}) + " " + std::to_string(days) + " days";
    }

    static unsigned unsignedOf(int number) { return static_cast<unsigned>(number); }
    [[nodiscard]] std::string yearText() const { return std::to_string(int{year_.year}); }

    static constexpr unsigned kShortestMonth = 29;
    static constexpr unsigned kLongestMonth = 32;

    const std::function<bool(std::uint16_t)>& knows_;
    YearAlmanac year_;
};

void appendMark(std::string& text, std::string_view marks, std::size_t place) {
    if (marks[place] != ' ') text += marks[place];
}

}  // namespace

Result<YearAlmanac> parseYearFile(std::string_view text, const std::function<bool(std::uint16_t)>& knows) {
    if (text.starts_with("\xEF\xBB\xBF")) return TextError{1, 1, "begins with a byte-order mark"};
    if (const std::size_t bad = notUtf8(text); bad != std::string_view::npos) {
        const auto line =
            static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(bad), '\n'));
        return TextError{line + 1, 0, "is not UTF-8"};
    }
    YearReader reader{knows};
    if (auto problem = forEachDataLine(text, [&](std::string_view line) { return reader.read(line); })) return *problem;
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    if (std::string why = reader.finish(); !why.empty()) return TextError{lines, 0, std::move(why)};
    if (text.back() != '\n') return TextError{lines + 1, 0, "ends in the middle of a line"};
    return reader.take();
}

std::string yearFileText(const YearAlmanac& year, const std::function<std::string_view(std::uint16_t)>& eventName) {
    std::string text = "year " + std::to_string(int{year.year}) + (year.published ? " published\n" : " computed\n");
    const Grade usual = year.published ? Grade::published : Grade::sure;
    for (const YearDay& day : year.days) {
        appendDate(text, day.date);
        if (day.dateGrade != usual) appendMark(text, kGradeMarks, static_cast<std::size_t>(day.dateGrade));
        text += ' ';
        appendDate(text, std::chrono::year_month_day{day.day});
        text += ' ' + std::to_string(day.tithi);
        if (day.skipped != 0) text += '+' + std::to_string(day.skipped);
        appendMark(text, kGradeMarks, static_cast<std::size_t>(day.tithiGrade));
        for (const EventEntry& event : day.events) {
            text += ' ' + std::to_string(event.id);
            appendMark(text, kHolidayMarks, static_cast<std::size_t>(event.holiday));
            appendMark(text, kGradeMarks, static_cast<std::size_t>(event.grade));
        }
        if (eventName) {
            text += "  # ";
            text += tithiTitle(day.tithi);
            for (const EventEntry& event : day.events) {
                text += "; ";
                text += eventName(event.id);
            }
        }
        text += '\n';
    }
    return text;
}

}  // namespace dinmala
