// Converts one column of AD dates, as in `column 2 <people.csv`: fields stand between commas, the first is 1.
// What is not a date of the calendar stays as it is, a heading for example.
#include <cstdlib>
#include <iostream>
#include <string>

#include "almanac/Edition.h"
#include "base/DateText.h"

namespace {

/// The BS date of a text such as "2013-04-14", or the text itself.
std::string converted(const std::string& text, const dinmala::BsCalendar& calendar) {
    const auto read = dinmala::readDate(text);
    if (!read || !read->year) return text;
    const std::chrono::year_month_day ad = std::chrono::year{*read->year} / read->month / read->day;
    const auto date = ad.ok() ? calendar.toDate(ad) : std::nullopt;
    return date ? dinmala::dateText(*date) : text;
}

}  // namespace

int main(int argc, char** argv) {
    const int column = argc > 1 ? std::atoi(argv[1]) : 1;
    const dinmala::BsCalendar& calendar = dinmala::currentEdition().calendar;
    for (std::string line; std::getline(std::cin, line);) {
        std::size_t begin = 0;
        for (int i = 1; i < column && begin != std::string::npos; ++i) {
            begin = line.find(',', begin);
            if (begin != std::string::npos) ++begin;
        }
        if (begin != std::string::npos) {
            const std::size_t length = line.substr(begin).find(',');
            const std::string field = line.substr(begin, length);
            line.replace(begin, field.size(), converted(field, calendar));
        }
        std::cout << line << "\n";
    }
}
