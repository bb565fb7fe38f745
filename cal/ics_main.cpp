// dinmala-ics: what `dinmala-cal ics` starts, apart, so that only it loads the iCalendar library. Its words are those
// that dinmala-cal has read and checked: "edition=current first=2083 last=2084 language=ne digits=devanagari months=1
// days=0 file=PATH force=0 follow=0"; without first and last it is this year and the next in Nepal.
#include <time.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "agenda/EditionSource.h"
#include "agenda/Sentences.h"
#include "agenda/Today.h"
#include "base/DateText.h"
#include "cal/CalendarFile.h"
#include "cal/ICalendar.h"
#include "cal/Messages.h"
#include "i18n/Translation.h"

namespace {

using namespace dinmala;
using namespace dinmala::cal;

using Words = std::map<std::string, std::string, std::less<>>;

std::string word(const Words& words, std::string_view key) {
    const auto found = words.find(key);
    return found != words.end() ? found->second : "";
}

/// The text as the calendar stands now; nothing where today lies outside the table.
std::optional<std::string> textNow(const Words& words, EditionSource& source) {
    const EditionId id = editionNamed(word(words, "edition")).value_or(EditionId::current);
    const Edition& edition = source.get(id);
    for (const std::string& problem : source.takeProblems()) complain(withoutControls(problem));
    ICalendarChoice choice;
    const auto now = std::chrono::sys_seconds{std::chrono::seconds{std::time(nullptr)}};
    if (const auto first = readNumber(word(words, "first")), last = readNumber(word(words, "last")); first && last) {
        choice.first = BsYear{*first};
        choice.last = BsYear{*last};
    } else if (const auto today = edition.calendar.toDate(nepalDay(now))) {
        choice.first = today->year;
        choice.last = std::min(today->year + std::chrono::years{1}, edition.calendar.lastDate().year);
    } else {
        return std::nullopt;
    }
    choice.language = word(words, "language") == "en" ? Language::english : Language::nepali;
    choice.digits = word(words, "digits") == "western" ? Digits::western : Digits::devanagari;
    choice.months = word(words, "months") == "1";
    choice.days = word(words, "days") == "1";
    // The first edition is as it is since it was made; people's own years are newer than the program's.
    std::chrono::sys_seconds stamp{std::chrono::seconds{DINMALA_DATA_TIME}};
    if (id == EditionId::current) stamp = std::max(stamp, source.newest().value_or(stamp));
    return iCalendarText(edition, choice, stamp);
}

/// A counted time, sleep included: a clock that is set back makes it no longer.
void waitForMore() {
    const std::chrono::sys_seconds now{std::chrono::seconds{std::time(nullptr)}};
    const timespec time{secondsToNextLook(now).count(), 0};
    clock_nanosleep(CLOCK_BOOTTIME, 0, &time, nullptr);
}

int run(const Words& words) {
    EditionSource source;
    const std::string path = word(words, "file");
    const bool follow = word(words, "follow") == "1";
    bool force = word(words, "force") == "1";
    bool begun = false;
    std::string told;
    do {
        const auto text = textNow(words, source);
        if (text && path.empty()) {
            if (std::fwrite(text->data(), 1, text->size(), stdout) == text->size() && std::fflush(stdout) == 0)
                return 0;
            complain(tr("cannot write: {1}", {std::strerror(errno)}));
            return 1;
        }
        const std::string problem = text ? keepCalendarFile(path, *text, force).value_or("")
                                         : tr("today lies outside the table; choose a year");
        if (!problem.empty() && problem != told) complain(problem);
        if (!problem.empty() && (!follow || !begun)) return 1;
        told = problem;
        begun = true;   // from here on a folder may go and a clock be wrong for a while
        force = false;  // it was asked for what was there at the start
        if (follow) waitForMore();
    } while (follow);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_MESSAGES, "");
    std::setlocale(LC_CTYPE, "C.UTF-8");
    openTranslations();
    Words words;
    for (int i = 1; i < argc; ++i) {
        const std::string_view text = argv[i];
        const std::size_t equals = std::min(text.find('='), text.size());
        words.emplace(text.substr(0, equals), text.substr(std::min(equals + 1, text.size())));
    }
    return run(words);
}
