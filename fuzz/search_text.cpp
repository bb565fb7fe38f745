// Texts for the desktop's search. Each hit's id is read back as the hit, its words tell its day in both calendars, and
// the date that it is named by finds it again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "agenda/Sentences.h"
#include "fuzz/Require.h"
#include "search/Search.h"

namespace {

using namespace dinmala;
using namespace std::chrono;

void check(const std::string& text, const Edition& edition) {
    constexpr sys_days kToday{2026y / 11 / 24};
    const auto hits = search(text, edition, kToday);
    require(hits.size() <= 5, "a text has at most five hits");
    for (const SearchHit& hit : hits) {
        require(hitOf(hitId(hit), edition) == hit, "an id is read as its hit");
        const HitWords words = hitWords(hit, edition, kToday, Language::english, Digits::western);
        const std::string ad = dateWords(hit.day, Language::english, Digits::western);
        const std::string bs = dateWords(*edition.calendar.toDate(hit.day), Language::english, Digits::western);
        require(words.copy.find(ad) != std::string::npos && words.copy.find(bs) != std::string::npos, "both dates");
        for (const std::string& date : {ad, bs}) {
            const auto again = search(date, edition, kToday);
            require(again.size() == 1 && again[0].day == hit.day, "a day's date finds the day");
        }
    }
    if (const auto hit = hitOf(text, edition)) require(hitId(*hit) == text, "a hit has one id");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    check(text, firstEdition());
    check(text, currentEdition());
    return 0;
}
