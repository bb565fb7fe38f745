#include "cal/YearFiles.h"

#include <iostream>
#include <iterator>
#include <vector>

#include "agenda/EditionSource.h"
#include "almanac/YearFile.h"
#include "cal/Messages.h"
#include "i18n/Translation.h"

namespace dinmala::cal {

namespace {

Result<YearAlmanac> standardInput() {
    constexpr std::size_t kLargest = 1 << 20;  // as readYearFile()
    std::string text(kLargest + 1, '\0');
    std::cin.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::cin.gcount()));
    if (text.size() > kLargest) return TextError{0, 0, "is larger than " + std::to_string(kLargest) + " bytes"};
    return parseYearFile(text, isCurrentEvent);
}

}  // namespace

Result<std::string> checkedYear(const std::string& path, const Edition& edition) {
    Result<YearAlmanac> year = path == "-" ? standardInput() : readYearFile(path);
    if (!year) return year.error();
    // Published years that stand in a folder already are its neighbours; a provisional one gives way.
    std::vector<YearAlmanac> years{*year};
    for (const BsYear other : edition.almanac.years()) {
        auto numbers = edition.almanac.numbers(other);
        if (other == year->year || !numbers->published || *numbers == currentEdition().almanac.numbers(other)) continue;
        years.push_back(*std::move(numbers));
    }
    if (const auto fitting = currentEditionWith(years); !fitting) return TextError{0, 0, fitting.error().what};
    const std::string number = std::to_string(int{year->year});
    const std::string days = std::to_string(year->days.size());
    return year->published ? tr("BS {1}, published, {2} days: fits into the calendar", {number, days})
                           : tr("BS {1}, computed, {2} days: fits into the calendar", {number, days});
}

std::string refusal(const std::string& path, const TextError& error) {
    const std::string line = error.line > 0 ? ":" + std::to_string(error.line) : "";
    return withoutControls(path + line + ": " + error.what);
}

}  // namespace dinmala::cal
