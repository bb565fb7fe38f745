#include "cal/Dates.h"

#include <algorithm>
#include <array>

#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"
#include "i18n/Translation.h"

namespace dinmala::cal {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Devanagari digits (three bytes, E0 A5 A6 to E0 A5 AF) as Western ones, the
/// rest as it is.
std::string westernDigits(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with("\xE0\xA5") && i + 2 < text.size()) {
            const auto value = static_cast<unsigned char>(text[i + 2]) - 0xA6;
            if (value >= 0 && value <= 9) {
                result += static_cast<char>('0' + value);
                i += 2;
                continue;
            }
        }
        result += text[i];
    }
    return result;
}

bool hasOtherThanAscii(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Takes `least` to `most` digits from the front of `text`; -1 when there are
/// fewer or another one follows.
std::int32_t takeNumber(std::string_view& text, std::size_t least, std::size_t most) {
    std::int32_t value = 0;
    std::size_t length = 0;
    for (; length < text.size() && length < most && isDigit(text[length]); ++length) {
        value = value * 10 + (text[length] - '0');
    }
    if (length < least) return -1;
    text.remove_prefix(length);
    return value;
}

std::optional<Date> readWesternDate(std::string_view text) {
    Date date;
    const bool compact = text.size() == 8 && std::all_of(text.begin(), text.end(), isDigit);
    date.year = takeNumber(text, 4, 4);
    const char separator = text.empty() ? '\0' : text.front();
    const auto takeSeparator = [&] {
        if (compact) return true;
        if (text.empty() || text.front() != separator) return false;
        text.remove_prefix(1);
        return true;
    };
    if (date.year < 0 || (!compact && separator != '-' && separator != '/' && separator != '.')) return std::nullopt;
    const std::size_t least = compact ? 2 : 1;
    if (!takeSeparator() || (date.month = takeNumber(text, least, 2)) < 0) return std::nullopt;
    if (!takeSeparator() || (date.day = takeNumber(text, least, 2)) < 0) return std::nullopt;
    if (!text.empty()) return std::nullopt;
    return date;
}

void put(char* out, std::int32_t value, std::size_t digits) {
    for (std::size_t i = digits; i-- > 0; value /= 10) out[i] = static_cast<char>('0' + value % 10);
}

std::int32_t asNumber(const Date& date) { return date.year * 10000 + date.month * 100 + date.day; }

bool isMonth(std::int32_t month) { return month >= 1 && month <= 12; }

}  // namespace

std::optional<Date> readDate(std::string_view text) {
    if (hasOtherThanAscii(text)) return readWesternDate(westernDigits(text));
    return readWesternDate(text);
}

std::optional<std::int32_t> readNumber(std::string_view text) {
    const std::string western = westernDigits(text);
    std::string_view rest = western;
    const std::int32_t number = takeNumber(rest, 1, 4);
    if (number < 0 || !rest.empty()) return std::nullopt;
    return number;
}

void appendDate(std::string& out, const Date& date, bool devanagari) {
    std::array<char, 10> text{};
    put(&text[0], date.year, 4);
    text[4] = '-';
    put(&text[5], date.month, 2);
    text[7] = '-';
    put(&text[8], date.day, 2);
    if (!devanagari) {
        out.append(text.data(), text.size());
        return;
    }
    const std::string_view whole{text.data(), text.size()};
    out += DataStoreFunctions::convertStringNumber2Nepali(whole.substr(0, 4));
    out += '-';
    out += DataStoreFunctions::convertStringNumber2Nepali(whole.substr(5, 2));
    out += '-';
    out += DataStoreFunctions::convertStringNumber2Nepali(whole.substr(8, 2));
}

std::string dateText(const Date& date, bool devanagari) {
    std::string text;
    appendDate(text, date, devanagari);
    return text;
}

std::string numberText(std::uint64_t number, bool devanagari, std::size_t width) {
    const std::string digits = std::to_string(number);
    const std::string blanks(digits.size() < width ? width - digits.size() : 0, ' ');
    return blanks + (devanagari ? DataStoreFunctions::convertStringNumber2Nepali(digits) : digits);
}

DayFinder::DayFinder(const DataStore& store)
    : store_(store),
      firstAd_(fieldValue(store.dataArray().front(), record::kAdStart)),
      lastAd_(fieldValue(store.dataArray().back(), record::kAdEnd)),
      firstBsYear_(fieldValue(store.dataArray().front(), record::kBsYear)),
      lastBsYear_(fieldValue(store.dataArray().back(), record::kBsYear)) {}

std::optional<Day> DayFinder::find(const Date& date, Calendar calendar) const {
    if (!isMonth(date.month) || date.day < 1) return std::nullopt;
    std::array<char, 8> text{};
    const std::string_view view{text.data(), text.size()};
    if (calendar == Calendar::Ad) {
        const std::int32_t number = asNumber(date);
        if (number < firstAd_ || number > lastAd_) return std::nullopt;
        put(text.data(), number, 8);
        const auto bs = store_.convertAd2Bs(view);  // d-MM-yyyy
        if (!bs) return std::nullopt;
        const std::size_t tail = bs->size() - 7;
        return Day{{intValue(std::string_view{*bs}.substr(tail + 3)), intValue(std::string_view{*bs}.substr(tail, 2)),
                    intValue(*bs)},
                   date};
    }
    if (date.year < firstBsYear_ || date.year > lastBsYear_) return std::nullopt;
    put(&text[0], date.day, 2);
    put(&text[2], date.month, 2);
    put(&text[4], date.year, 4);
    const auto ad = store_.convertBs2Ad(view);  // yyyy-MM-dd
    if (!ad) return std::nullopt;
    const std::string_view adText = *ad;
    return Day{date, {intValue(adText.substr(0, 4)), intValue(adText.substr(5, 2)), intValue(adText.substr(8, 2))}};
}

std::optional<Day> DayFinder::find(std::string_view text, Calendar calendar) const {
    const auto date = readDate(text);
    return date ? find(*date, calendar) : std::nullopt;
}

std::string DayFinder::problemWith(std::string_view text, Calendar calendar) const {
    const auto date = readDate(text);
    if (!date) return tr("{1} is not a date such as 2070-01-31", {shownText(text)});
    const bool ad = calendar == Calendar::Ad;
    const std::string name = (ad ? "AD " : "BS ") + dateText(*date);
    if (!isMonth(date->month)) return tr("{1}: there is no month {2}", {name, std::to_string(date->month)});
    const bool coversYear = ad || (date->year >= firstBsYear_ && date->year <= lastBsYear_);
    std::uint64_t length = 0;
    if (ad) {
        length =
            store_.getNoOfDaysInMonth(static_cast<std::uint64_t>(date->year), static_cast<std::uint64_t>(date->month));
    } else if (coversYear) {
        const std::string monthOf = dateText(*date).substr(5, 2) + dateText(*date).substr(0, 4);
        const auto& record = store_.dataArray()[store_.findIndexByBs("01" + monthOf)];
        length = static_cast<std::uint64_t>(fieldValue(record, record::kBsNoOfDays));
    }
    if (length > 0 && (date->day < 1 || static_cast<std::uint64_t>(date->day) > length)) {
        return tr("{1}: the month has days 1 to {2}", {name, std::to_string(length)});
    }
    const auto dashed = [](std::int32_t number) {
        return dateText({number / 10000, number / 100 % 100, number % 100});
    };
    if (ad) return tr("{1} lies outside the table, AD {2} to {3}", {name, dashed(firstAd_), dashed(lastAd_)});
    return tr("{1} lies outside the table, BS {2} to {3}",
              {name, std::to_string(firstBsYear_), std::to_string(lastBsYear_)});
}

std::uint64_t DayFinder::weekDay(const Day& day) const {
    std::array<char, 8> text{};
    put(text.data(), asNumber(day.ad), 8);
    return store_.getWeekDayByAd({text.data(), text.size()});
}

std::string shownText(std::string_view text) {
    constexpr std::size_t kLongest = 60;
    std::string shown{text.substr(0, kLongest)};
    if (text.size() > kLongest) {
        // Not in the middle of a character: go back over its later bytes.
        while (!shown.empty() && (static_cast<unsigned char>(shown.back()) & 0xC0) == 0x80) shown.pop_back();
        if (!shown.empty() && static_cast<unsigned char>(shown.back()) >= 0xC0) shown.pop_back();
        shown += "...";
    }
    for (char& c : shown) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    }
    return "\"" + shown + "\"";
}

}  // namespace dinmala::cal
