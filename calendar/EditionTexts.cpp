// An edition's lists as the texts of a store: ids with names, and a year's tokens.
#include <deque>
#include <string>
#include <vector>

#include "almanac/YearFile.h"
#include "base/Names.h"
#include "base/Text.h"
#include "calendar/DataStore.h"

namespace dinmala {

namespace {

/// The texts of one edition and what they are views into.
struct MadeTexts {
    std::deque<std::string> texts;
    std::vector<KeyedText> eventNames, eventYears, tithiNames, tithiYears;

    std::string_view keep(std::string text) { return texts.emplace_back(std::move(text)); }
};

void addToken(std::string& list, const BsDate& date, unsigned id) {
    if (!list.empty()) list += ' ';
    list += padded(unsigned{date.day}, 2) + padded(unsigned{date.month}, 2) + std::to_string(id);
}

}  // namespace

StoreTexts storeTexts(const Edition& edition) {
    if (edition.id == EditionId::first) return {};
    auto made = std::make_shared<MadeTexts>();
    for (std::uint16_t id = 1; id <= kLongestEventId; ++id) {
        const std::string_view name = edition.almanac.eventName(id);
        if (!name.empty()) made->eventNames.emplace_back(made->keep(std::to_string(id)), name);
    }
    for (unsigned tithi = 1; tithi <= kTithis.size(); ++tithi) {
        made->tithiNames.emplace_back(made->keep(std::to_string(tithi)), nameAt(kTithis, tithi));
    }
    for (const BsYear year : edition.almanac.years()) {
        std::string events;
        std::string tithis;
        for (const AlmanacDay& day : edition.almanac.year(year)) {
            for (const Tithi& tithi : day.tithis) addToken(tithis, day.date, tithi.number);
            for (const Event& event : day.events) addToken(events, day.date, event.id);
        }
        const std::string_view key = made->keep(std::to_string(int{year}));
        made->eventYears.emplace_back(key, made->keep(std::move(events)));
        made->tithiYears.emplace_back(key, made->keep(std::move(tithis)));
    }
    StoreTexts texts;
    texts.calendar = edition.calendar;
    texts.events = {made->eventNames, made->eventYears, {}};
    texts.tithis = {made->tithiNames, made->tithiYears};
    texts.owner = std::move(made);
    return texts;
}

}  // namespace dinmala
