/// Days in words, and what is to be said of them, as every face says it. Names are in the language asked for, whole
/// sentences in the user's (tr()).
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "agenda/ReadDay.h"
#include "almanac/Edition.h"
#include "base/DateText.h"
#include "base/Names.h"

namespace dinmala {

/// "७ मंसिर २०८३", "7 Mangsir 2083".
[[nodiscard]] std::string dateWords(const BsDate& date, Language language, Digits digits);

/// "२३ नोभेम्बर २०२६", "23 November 2026".
[[nodiscard]] std::string dateWords(std::chrono::sys_days day, Language language, Digits digits);

/// An AD day as another program of ours takes it: "23 November 2026", which readDay() takes for the same day whatever
/// calendar it assumes and in every edition.
[[nodiscard]] std::string dayArgument(std::chrono::sys_days day);

/// "06:28", the time of day.
[[nodiscard]] std::string clockText(std::chrono::local_time<std::chrono::minutes> minute);
/// "शुक्ल चतुर्दशी" or "Shukla Chaturdashi"; the list's name where that is no tithi.
[[nodiscard]] std::string tithiWords(const Tithi& tithi, Language language);
/// Of the day, and after "/ " one that is skipped; empty for a day without.
[[nodiscard]] std::string tithiWords(const AlmanacDay& day, Language language = Language::nepali);

/// An event's name in a language; the Nepali one where there is no English one.
[[nodiscard]] std::string_view eventName(const Event& event, Language language);

/// "public holiday"; empty for none.
[[nodiscard]] std::string holidayWords(Holiday holiday);

/// "today", "tomorrow", "in 12 days", "yesterday", "12 days ago".
[[nodiscard]] std::string distanceWords(std::chrono::days fromToday, Digits digits);

/// How far a day can be trusted, in a sentence; of a day that Nepal has published, which of its events the reckoning
/// leaves open; empty where there is nothing to doubt.
[[nodiscard]] std::string trustNote(const AlmanacDay& day);

/// How far it can be trusted that an event is on its day: in a year that Nepal has not published the worse of both
/// grades; in another the event's own, and published where that is sure.
[[nodiscard]] Grade gradeOf(const AlmanacDay& day, const Event& event);
/// The same in a sentence. What makes another event of the day doubtful is none of it.
[[nodiscard]] std::string trustNote(const AlmanacDay& day, const Event& event, Language language = Language::nepali);

/// "2065 to 2071", the years that an edition has lists for.
[[nodiscard]] std::string yearsWithLists(const Edition& edition);

/// That an edition has no tithis and festivals for a year, and for which it has.
[[nodiscard]] std::string noListsNote(const Edition& edition, BsYear year);

/// A text from outside, in quotes and fit for a terminal: UTF-8 without control characters, shortened where it
/// is long.
[[nodiscard]] std::string shownText(std::string_view text);

/// The text with "?" for each control character and each byte that is not UTF-8.
[[nodiscard]] std::string withoutControls(std::string_view text);

/// Why a text is no day, as a sentence that shows it. REQUIRES: readDay() gives nothing for these.
[[nodiscard]] std::string problemWith(std::string_view text, CalendarKind assumed, const BsCalendar& calendar);

}  // namespace dinmala
