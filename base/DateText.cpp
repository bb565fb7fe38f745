#include "base/DateText.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/Names.h"

namespace dinmala {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The value of a Devanagari digit (three bytes, E0 A5 A6 to E0 A5 AF) at the front of a text; -1 for none.
int devanagariDigit(std::string_view text) {
    if (!text.starts_with("\xE0\xA5") || text.size() < 3) return -1;
    const int value = static_cast<unsigned char>(text[2]) - 0xA6;
    return value >= 0 && value <= 9 ? value : -1;
}

/// Takes `least` to `most` digits from the front; -1 when there are fewer.
int takeNumber(std::string_view& text, std::size_t least, std::size_t most) {
    int value = 0;
    std::size_t length = 0;
    for (; length < text.size() && length < most && isDigit(text[length]); ++length) {
        value = value * 10 + (text[length] - '0');
    }
    if (length < least) return -1;
    text.remove_prefix(length);
    return value;
}

/// A date of digits and two equal separators, or of eight digits. REQUIRES: Western digits.
Result<DateFields> readDigits(const std::string_view whole) {
    std::string_view text = whole;
    const auto stops = [&] { return TextError{1, whole.size() - text.size() + 1, "is not a date"}; };
    const bool compact = text.size() == 8 && std::all_of(text.begin(), text.end(), isDigit);
    const int year = takeNumber(text, 4, 4);
    if (year < 0) return stops();
    const char separator = text.empty() ? '\0' : text.front();
    if (!compact && separator != '-' && separator != '/' && separator != '.') return stops();
    const auto takePart = [&] {
        if (!compact) {
            if (text.empty() || text.front() != separator) return -1;
            text.remove_prefix(1);
        }
        return takeNumber(text, compact ? 2 : 1, 2);
    };
    const int month = takePart();
    if (month < 0) return stops();
    const int day = takePart();
    if (day < 0 || !text.empty()) return stops();
    return DateFields{year, month, day, std::nullopt};
}

struct Spelling {
    std::string_view name;  // small letters
    int month;
};

// The Nepali months as newspapers, government notices and people write them, the listed names among them.
constexpr std::array kBsSpellings = std::to_array<Spelling>({
    {"baishakh", 1}, {"baisakh", 1},  {"vaishakh", 1}, {"vaisakh", 1}, {"बैशाख", 1},     {"वैशाख", 1},     {"jestha", 2},
    {"jeth", 2},     {"jyeshtha", 2}, {"jyestha", 2},  {"jesth", 2},   {"जेठ", 2},       {"जेष्ठ", 2},      {"ज्येष्ठ", 2},
    {"ashadh", 3},   {"asar", 3},     {"asadh", 3},    {"ashad", 3},   {"aashadh", 3},  {"आषाढ", 3},     {"असार", 3},
    {"अषाढ", 3},     {"shrawan", 4},  {"saun", 4},     {"sawan", 4},   {"shravan", 4},  {"साउन", 4},     {"श्रावण", 4},
    {"सावन", 4},     {"bhadra", 5},   {"bhadau", 5},   {"bhadaun", 5}, {"भाद्र", 5},     {"भदौ", 5},      {"ashwin", 6},
    {"asoj", 6},     {"aswin", 6},    {"ashoj", 6},    {"आश्विन", 6},   {"असोज", 6},     {"अश्विन", 6},    {"kartik", 7},
    {"kattik", 7},   {"कार्तिक", 7},   {"कात्तिक", 7},   {"mangsir", 8}, {"marga", 8},    {"mangshir", 8}, {"मंसिर", 8},
    {"मङ्सिर", 8},    {"मार्ग", 8},     {"poush", 9},    {"pus", 9},     {"push", 9},     {"paush", 9},    {"पौष", 9},
    {"पुस", 9},       {"पुष", 9},       {"magh", 10},    {"माघ", 10},    {"falgun", 11},  {"phalgun", 11}, {"fagun", 11},
    {"phagun", 11},  {"फाल्गुण", 11},   {"फाल्गुन", 11},   {"फागुन", 11},   {"chaitra", 12}, {"chait", 12},   {"चैत्र", 12},
    {"चैत", 12},
});

constexpr std::array kAdSpellings = std::to_array<Spelling>({
    {"january", 1}, {"february", 2}, {"march", 3},     {"april", 4},    {"may", 5},       {"june", 6},
    {"july", 7},    {"august", 8},   {"september", 9}, {"october", 10}, {"november", 11}, {"december", 12},
    {"sept", 9},    {"जनवरी", 1},    {"फेब्रुअरी", 2},    {"फेब्रुवरी", 2},   {"मार्च", 3},      {"अप्रिल", 4},
    {"एप्रिल", 4},   {"मे", 5},        {"जुन", 6},        {"जुलाई", 7},     {"जुलाइ", 7},      {"अगस्ट", 8},
    {"अगस्त", 8},    {"सेप्टेम्बर", 9},   {"अक्टोबर", 10},   {"नोभेम्बर", 11},  {"डिसेम्बर", 12},
});

std::string smallLetters(std::string_view text) {
    std::string result{text};
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

/// A date with a month's name, and day and year in either order. REQUIRES: Western digits.
Result<DateFields> readWords(std::string_view text) {
    struct Word {
        std::string_view text;
        std::size_t column;
    };
    std::vector<Word> words;
    constexpr std::string_view kBetween = " ,\t";
    for (std::size_t at = text.find_first_not_of(kBetween); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBetween, at), text.size());
        words.push_back({text.substr(at, end - at), at + 1});
        at = text.find_first_not_of(kBetween, end);
    }
    DateFields date;
    for (const Word& word : words) {
        const auto stops = [&] { return TextError{1, word.column, "is not a date"}; };
        if (const auto number = readNumber(word.text)) {
            const bool isYear = word.text.size() == 4;
            if (word.text.size() == 3 || (isYear ? date.year.has_value() : date.day != 0)) return stops();
            if (isYear) {
                date.year = *number;
            } else {
                date.day = *number;
            }
        } else if (const auto named = readMonthName(word.text); named && !date.calendar) {
            date.calendar = named->calendar;
            date.month = named->month;
        } else {
            return stops();
        }
    }
    if (!date.calendar || date.day == 0) return TextError{1, text.size() + 1, "is not a date"};
    return date;
}

void put(char* out, int value, std::size_t digits) {
    for (std::size_t i = digits; i-- > 0; value /= 10) out[i] = static_cast<char>('0' + value % 10);
}

void appendDashed(std::string& out, int year, unsigned month, unsigned day, Digits digits) {
    std::array<char, 10> text{};
    put(&text[0], year, 4);
    text[4] = '-';
    put(&text[5], static_cast<int>(month), 2);
    text[7] = '-';
    put(&text[8], static_cast<int>(day), 2);
    const std::string_view whole{text.data(), text.size()};
    if (digits == Digits::devanagari) {
        out += inDevanagari(whole);
    } else {
        out += whole;
    }
}

}  // namespace

Result<DateFields> readDate(std::string_view text) {
    const bool ascii = isAscii(text);
    const std::string western = ascii ? std::string{} : inWestern(text);
    const std::string_view readable = ascii ? text : std::string_view{western};
    auto date = readDigits(readable);
    if (date || std::all_of(readable.begin(), readable.end(), [](char c) { return isDigit(c) || c == '-'; }))
        return date;
    auto named = readWords(readable);
    if (named) return named;
    return named.error().column > date.error().column ? std::move(named) : std::move(date);
}

std::optional<int> readNumber(std::string_view text) {
    const std::string western = isAscii(text) ? std::string{} : inWestern(text);
    std::string_view rest = western.empty() ? text : std::string_view{western};
    const int number = takeNumber(rest, 1, 4);
    if (number < 0 || !rest.empty()) return std::nullopt;
    return number;
}

std::optional<NamedMonth> readMonthName(std::string_view name) {
    const std::string small = smallLetters(name);
    for (const Spelling& spelling : kBsSpellings) {
        if (small == spelling.name) return NamedMonth{CalendarKind::bs, spelling.month};
    }
    for (const Spelling& spelling : kAdSpellings) {
        // Three bytes are three letters of English names alone.
        if (small == spelling.name || (isAscii(small) && small == spelling.name.substr(0, 3))) {
            return NamedMonth{CalendarKind::ad, spelling.month};
        }
    }
    return std::nullopt;
}

void appendDate(std::string& out, const BsDate& date, Digits digits) {
    appendDashed(out, int{date.year}, unsigned{date.month}, unsigned{date.day}, digits);
}

void appendDate(std::string& out, const std::chrono::year_month_day& date, Digits digits) {
    appendDashed(out, int{date.year()}, unsigned{date.month()}, unsigned{date.day()}, digits);
}

std::string dateText(const BsDate& date, Digits digits) {
    std::string text;
    appendDate(text, date, digits);
    return text;
}

std::string dateText(const std::chrono::year_month_day& date, Digits digits) {
    std::string text;
    appendDate(text, date, digits);
    return text;
}

std::string numberText(std::uint64_t number, Digits digits, std::size_t width) {
    const std::string text = std::to_string(number);
    const std::string blanks(text.size() < width ? width - text.size() : 0, ' ');
    return blanks + (digits == Digits::devanagari ? inDevanagari(text) : text);
}

std::string inDevanagari(std::string_view text) {
    std::string result;
    result.reserve(text.size() * kDevanagariDigits[0].size());
    for (const char c : text) {
        if (isDigit(c)) {
            result += kDevanagariDigits[static_cast<std::size_t>(c - '0')];
        } else {
            result += c;
        }
    }
    return result;
}

std::string inWestern(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (const int digit = devanagariDigit(text.substr(i)); digit >= 0) {
            result += static_cast<char>('0' + digit);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace dinmala
