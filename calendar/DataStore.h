/// The calendar model: the month table, today in Nepal, four month cursors and
/// the almanac. A store is built for one moment and lives until the next refresh.
///
/// Numbers: weekdays are 1 = Sunday to 7 = Saturday, months 1 to 12 in both
/// calendars, an index counts months from BS 1999 month 1. Nothing throws and
/// nothing reports an error; each operation says what a miss gives.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "almanac/DataStoreEvents.h"
#include "almanac/DataStoreTithi.h"
#include "almanac/Edition.h"
#include "base/BsCalendar.h"
#include "base/Clock.h"
#include "calendar/MonthTable.h"

namespace dinmala {

/// The texts that a store is built from: the embedded ones, or those of another
/// published calendar. The catalogues' texts must outlive the store, or be kept by
/// `owner`.
struct StoreTexts {
    std::string_view monthTable = kMonthTable;
    EventTexts events = embeddedEventTexts();
    TithiTexts tithis = embeddedTithiTexts();
    /// The months as a value, in place of `monthTable`.
    std::optional<BsCalendar> calendar{};
    std::shared_ptr<const void> owner{};
};

/// An edition as the texts of a store: `DataStore{clock, storeTexts(currentEdition())}`. The lists of the
/// first edition are constants; those of the current one are made by this call, some 10 ms.
[[nodiscard]] StoreTexts storeTexts(const Edition& edition);

class DataStore {
public:
    /// Reads the clock once and sets the cursors on the month that holds today's
    /// Nepal date; on the table's first month when no month does (see
    /// coversToday()).
    explicit DataStore(Clock clock = systemNow, const StoreTexts& texts = {});

    /// Whether today's Nepal date, as read at creation, lies in the month table.
    /// Where it does not, every field of the current month is that of BS 1999
    /// month 1 and getBsCurrentDay() is 0: show none of them.
    [[nodiscard]] bool coversToday() const { return coversToday_; }

    // --- Searches ---------------------------------------------------------

    /// The index of the month that holds an AD date.
    /// @param adDate text that begins with `yyyyMMdd`; what follows is ignored
    /// @return 0 for a date outside the table (1942-04-13 to 2043-04-13) and for
    ///         a shorter text: a miss equals a hit on the first month
    [[nodiscard]] std::uint64_t findIndexByAd(std::string_view adDate) const;

    /// The index of the month of a BS date.
    /// @param bsDate text of the form `ddMMyyyy`; the day is not looked at
    /// @return 0 for a month outside the table and for a shorter text
    [[nodiscard]] std::uint64_t findIndexByBs(std::string_view bsDate) const;

    // --- Nepal's clock, read anew by each call ------------------------------

    /// "yyyyMMdd HH:mm", as "20130420 06:30".
    [[nodiscard]] std::string getCurrentNepalDateTime() const;
    /// Day of the month without a leading zero, "5".
    [[nodiscard]] std::string getCurrentAdDay() const;
    /// Two digits, "05".
    [[nodiscard]] std::string getCurrentAdMonth() const;
    /// Four digits.
    [[nodiscard]] std::string getCurrentAdYear() const;
    /// Today's weekday in Nepal, "1" = Sunday to "7" = Saturday.
    [[nodiscard]] std::string getCurrentBSDayOfWeek() const;
    /// Hours and minutes in Devanagari, "०६:३०".
    [[nodiscard]] std::string getCurrentBSTime() const;
    /// Hours, minutes and seconds; sets the reload flag when they are 00:00:01,
    /// else clears it.
    std::string getCurrentBSTimeFull();
    /// 1 when the last getCurrentBSTimeFull() read 00:00:01, else 0.
    [[nodiscard]] std::uint64_t getReloadFlag() const { return reload_flag_; }

    /// Days of a Gregorian month; months past 12 or below 1 count on into the
    /// neighbouring years. 0 for a year past 9999 or a month past 9999.
    [[nodiscard]] std::uint64_t getNoOfDaysInMonth(std::uint64_t year, std::uint64_t month) const;

    /// Year and month (1 to 12) of the AD month before today's in Nepal.
    [[nodiscard]] std::uint64_t getAdPreviousYear() const;
    [[nodiscard]] std::uint64_t getAdPreviousMonth() const;

    /// Today's day of the BS month, 1 to 32, counted from the current month's
    /// first day; 0 when the month table does not cover today.
    [[nodiscard]] std::uint64_t getBsCurrentDay() const;

    // --- Names --------------------------------------------------------------

    /// @param calendar "bs" for the Devanagari name; anything else for English
    /// @param form     "long" for the long English name; anything else for the
    ///                 short one; ignored for "bs". Both compare exactly.
    /// @return "" for a number outside 1 to 7, or 1 to 12
    [[nodiscard]] std::string_view getWeekDayName(std::string_view calendar, std::string_view form,
                                                  std::uint64_t weekDay) const;
    [[nodiscard]] std::string_view getMonthName(std::string_view calendar, std::string_view form,
                                                std::uint64_t month) const;

    // --- Conversion, by whole civil days --------------------------------------

    /// Converts a BS date to its AD date.
    ///
    /// @param bsDate text of the form `ddMMyyyy`
    /// @return "yyyy-MM-dd", or nothing when the day lies beyond the length of
    ///         its month ("32012070") or the text is shorter
    ///
    /// Nothing else is checked: day 00 is the day before the month's first, and
    /// a month outside the table counts as the table's first, as in
    /// findIndexByBs().
    [[nodiscard]] std::optional<std::string> convertBs2Ad(std::string_view bsDate) const;

    /// Converts an AD date to its BS date.
    ///
    /// @param adDate text that begins with `yyyyMMdd`; what follows is ignored,
    ///               so getCurrentNepalDateTime() serves as is
    /// @return "d-MM-yyyy" (the day without a leading zero: "7-01-2070"), or
    ///         nothing when the Gregorian month has no such day ("20130231") or
    ///         the text is shorter
    ///
    /// A date outside the table (1942-04-13 to 2043-04-13) is not refused: as in
    /// findIndexByAd(), it counts from the table's first month.
    [[nodiscard]] std::optional<std::string> convertAd2Bs(std::string_view adDate) const;

    /// The weekday of an AD date (`yyyyMMdd` and anything), the table not asked.
    [[nodiscard]] std::uint64_t getWeekDayByAd(std::string_view adDate) const;

    /// As DataStoreFunctions::daysBetween().
    [[nodiscard]] std::uint64_t daysBetween(Moment a, Moment b) const;

    /// The moment `day` - 1 days later at the same time of day in the process's
    /// default time zone: 1 gives `date` itself.
    [[nodiscard]] Moment addDaysToDate(Moment date, std::uint64_t day) const;

    /// Always nothing.
    [[nodiscard]] std::optional<std::string> getBSDateByAd(std::string_view adDate) const;

    // --- Moves of the showing month -------------------------------------------
    // The next and previous cursors follow. A move past either end of the table
    // changes nothing; a seek that finds no month shows the first one.

    void nextMonth();
    void previousMonth();
    void currentMonth();
    /// `ddMMyyyy`, the day not looked at; see findIndexByBs().
    void seekByBsDate(std::string_view bsDate);
    /// `yyyyMMdd` and anything; see findIndexByAd().
    void seekByAdDate(std::string_view adDate);

    // --- Cursors ----------------------------------------------------------------
    // The current cursor never moves. At the table's ends the missing neighbour
    // has the empty record, and pm_index() the value 0 - 1.

    [[nodiscard]] std::uint64_t cm_index() const { return cm_index_; }
    [[nodiscard]] std::uint64_t sm_index() const { return sm_index_; }
    [[nodiscard]] std::uint64_t nm_index() const { return nm_index_; }
    [[nodiscard]] std::uint64_t pm_index() const { return pm_index_; }

    /// The records at the cursors. A setter replaces the record and nothing else.
    [[nodiscard]] const std::string& cm_data() const { return cm_data_; }
    [[nodiscard]] const std::string& sm_data() const { return sm_data_; }
    [[nodiscard]] const std::string& nm_data() const { return nm_data_; }
    [[nodiscard]] const std::string& pm_data() const { return pm_data_; }
    void setCm_data(std::string record);
    void setSm_data(std::string record);
    void setNm_data(std::string record);
    void setPm_data(std::string record);

    /// The month table, one record an element. Setting it moves no cursor.
    [[nodiscard]] const std::vector<std::string>& dataArray() const;
    void setDataArray(std::vector<std::string> records);

    // --- Fields of the cursors' records; 0 where a record has no digit ----------

    [[nodiscard]] std::uint64_t showingBSMonth() const;
    [[nodiscard]] std::uint64_t showingBSYear() const;
    [[nodiscard]] std::uint64_t showingBSNoOfDays() const;
    [[nodiscard]] std::uint64_t showingADStartYear() const;
    [[nodiscard]] std::uint64_t showingADStartMonth() const;
    [[nodiscard]] std::uint64_t showingADStartDay() const;
    [[nodiscard]] std::uint64_t showingADEndYear() const;
    [[nodiscard]] std::uint64_t showingADEndMonth() const;
    [[nodiscard]] std::uint64_t showingADEndDay() const;
    [[nodiscard]] std::uint64_t showingBSFirstWeekDay() const;

    [[nodiscard]] std::uint64_t nextBSMonth() const;
    [[nodiscard]] std::uint64_t nextBSYear() const;
    [[nodiscard]] std::uint64_t nextBSNoOfDays() const;
    [[nodiscard]] std::uint64_t nextADStartYear() const;
    [[nodiscard]] std::uint64_t nextADStartMonth() const;
    [[nodiscard]] std::uint64_t nextADStartDay() const;
    [[nodiscard]] std::uint64_t nextADEndYear() const;
    [[nodiscard]] std::uint64_t nextADEndMonth() const;
    [[nodiscard]] std::uint64_t nextADEndDay() const;
    [[nodiscard]] std::uint64_t nextBSFirstWeekDay() const;

    [[nodiscard]] std::uint64_t previousBSMonth() const;
    [[nodiscard]] std::uint64_t previousBSYear() const;
    [[nodiscard]] std::uint64_t previousBSNoOfDays() const;
    [[nodiscard]] std::uint64_t previousADStartYear() const;
    [[nodiscard]] std::uint64_t previousADStartMonth() const;
    [[nodiscard]] std::uint64_t previousADStartDay() const;
    [[nodiscard]] std::uint64_t previousADEndYear() const;
    [[nodiscard]] std::uint64_t previousADEndMonth() const;
    [[nodiscard]] std::uint64_t previousADEndDay() const;
    [[nodiscard]] std::uint64_t previousBSFirstWeekDay() const;

    [[nodiscard]] std::uint64_t currentBSMonth() const;
    [[nodiscard]] std::uint64_t currentBSYear() const;
    [[nodiscard]] std::uint64_t currentBSNoOfDays() const;
    [[nodiscard]] std::uint64_t currentADStartYear() const;
    [[nodiscard]] std::uint64_t currentADStartMonth() const;
    [[nodiscard]] std::uint64_t currentADStartDay() const;
    [[nodiscard]] std::uint64_t currentADEndYear() const;
    [[nodiscard]] std::uint64_t currentADEndMonth() const;
    [[nodiscard]] std::uint64_t currentADEndDay() const;
    /// "Frist" is deliberate; the other three are spelled "First".
    [[nodiscard]] std::uint64_t currentBSFristWeekDay() const;

    /// Days of the Gregorian months in which the showing month begins and ends.
    [[nodiscard]] std::uint64_t showingADStartNoOfDays() const;
    [[nodiscard]] std::uint64_t showingADEndNoOfDays() const;

    // --- The showing month as a grid ----------------------------------------------
    // 42 cells, six weeks of seven days with Sunday first.

    /// The BS day in each cell, leading and trailing days of the neighbours
    /// included; 0 for a leading cell before the table's first month.
    [[nodiscard]] std::vector<std::int32_t> getMonthBSDays() const;
    /// 0 for a cell of the previous month, 1 of the showing one, 2 of the next.
    [[nodiscard]] std::vector<std::int32_t> getMonthBSDaysIsCurrentNextOrPrevious() const;
    /// The AD day of the month in each cell.
    [[nodiscard]] std::vector<std::int32_t> getMonthADDays() const;
    /// "15 Jun, 2013" for each day of the showing month.
    [[nodiscard]] std::vector<std::string> getMonthADDaysFull() const;

    // --- The almanac; see DataStoreEvents and DataStoreTithi ------------------------

    [[nodiscard]] std::vector<std::string> getDayEvent(std::string_view year, std::string_view dayMonth) const;
    [[nodiscard]] std::vector<std::string> getYearEvents(std::uint64_t year) const;
    [[nodiscard]] std::uint64_t getYearEventsCount(std::uint64_t year) const;
    [[nodiscard]] std::vector<std::string> getDayTithi(std::string_view year, std::string_view dayMonth) const;

    /// The important events to come, "Upcoming" here and "UpComing" there, which is
    /// deliberate; sets the process's default time zone, see
    /// DataStoreEvents::getUpComingEvents().
    [[nodiscard]] std::vector<std::string> getUpcomingEvents() const;

    /// A year's events after a BS month and day with the days from now, in the
    /// process's default time zone: "<name>^<days> दिन बाँकी", Devanagari digits;
    /// or "<name>~<month name> <day>" where the day does not convert. A day
    /// already past counts as if it were as far ahead.
    [[nodiscard]] std::vector<std::string> getYearUpcomingEventsAfterMonthAndDay(std::uint64_t year,
                                                                                 std::uint64_t month,
                                                                                 std::uint64_t day) const;

    [[nodiscard]] const std::string& ad_c_date() const { return ad_c_date_; }
    [[nodiscard]] std::uint64_t reload_flag() const { return reload_flag_; }
    [[nodiscard]] const DataStoreEvents& dse() const { return dse_; }
    [[nodiscard]] const DataStoreTithi& dst() const { return dst_; }

private:
    /// Sets the showing cursor and its neighbours.
    void show(std::uint64_t index);
    /// The record at an index; "" outside the table.
    [[nodiscard]] std::string recordAt(std::uint64_t index) const;
    [[nodiscard]] std::size_t recordCount() const;

    Clock clock_;
    /// The months as a value; nothing for records that a program set or a table of its own, which are scanned.
    std::optional<BsCalendar> calendar_;
    std::shared_ptr<const void> owner_;
    bool isEmbeddedTable_;  // calendar_ is that of the embedded table, whose conversions are constants
    bool coversToday_ = false;

    std::uint64_t cm_index_ = 0;
    std::uint64_t sm_index_ = 0;
    std::uint64_t nm_index_ = 0;
    std::uint64_t pm_index_ = 0;
    std::uint64_t reload_flag_ = 0;
    std::string ad_c_date_;
    mutable std::vector<std::string> dataArray_;  // spelled out of calendar_ when somebody asks
    DataStoreEvents dse_;
    DataStoreTithi dst_;
    std::string pm_data_;
    std::string sm_data_;
    std::string nm_data_;
    std::string cm_data_;
};

}  // namespace dinmala
