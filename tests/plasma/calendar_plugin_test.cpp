// The plugin as Plasma loads it: from its file, asked month by month.
#include <gtest/gtest.h>

#include <CalendarEvents/CalendarEventsPlugin>
#include <QPluginLoader>
#include <QSet>
#include <ctime>
#include <memory>

#include "tests/support/TemporaryFolder.h"

namespace dinmala {
namespace {

using CalendarEvents::CalendarEventsPlugin;
using CalendarEvents::EventData;

class CalendarOfPlasma : public testing::Test {
protected:
    void SetUp() override {
        setenv("XDG_CONFIG_HOME", home_.path().c_str(), 1);  // GLib asks once in a process
        setenv("XDG_DATA_HOME", home_.path().c_str(), 1);
        loader_.setFileName(PLUGIN);
        plugin_ = qobject_cast<CalendarEventsPlugin*>(loader_.instance());
        ASSERT_NE(plugin_, nullptr) << loader_.errorString().toStdString();
        QObject::connect(plugin_, &CalendarEventsPlugin::dataReady, [this](const auto& found) { events = found; });
        QObject::connect(plugin_, &CalendarEventsPlugin::alternateCalendarDateReady,
                         [this](const auto& found) { dates = found; });
        QObject::connect(plugin_, &CalendarEventsPlugin::subLabelReady, [this](const auto& found) { labels = found; });
    }
    void TearDown() override { loader_.unload(); }

    void ask(const QDate& from, const QDate& to) { plugin_->loadEventsForDateRange(from, to); }
    [[nodiscard]] std::string dateOn(const QDate& day) const {
        const auto date = dates.value(day);
        return std::to_string(date.year) + "-" + std::to_string(date.month) + "-" + std::to_string(date.day);
    }

    inline static const TemporaryFolder home_;
    QPluginLoader loader_;
    CalendarEventsPlugin* plugin_ = nullptr;
    QMultiHash<QDate, EventData> events;
    QHash<QDate, QCalendar::YearMonthDay> dates;
    QHash<QDate, CalendarEventsPlugin::SubLabel> labels;
};

TEST_F(CalendarOfPlasma, TellsOfEachDay) {
    const QDate day(2026, 10, 17);
    ask(QDate(2026, 9, 27), QDate(2026, 11, 7));
    EXPECT_EQ(dates.size(), 42);
    EXPECT_EQ(labels.size(), 42);
    EXPECT_EQ(dateOn(day), "2083-6-31");
    const auto label = labels.value(day);
    EXPECT_EQ(label.dayLabel.toStdString(), "३१");
    EXPECT_EQ(label.monthLabel.toStdString(), "आश्विन");
    EXPECT_EQ(label.yearLabel.toStdString(), "२०८३");
    EXPECT_EQ(label.label.toStdString(), "३१ आश्विन २०८३, सप्तमी");
    std::vector<std::string> holidays;
    for (const EventData& event : events.values(day)) {
        EXPECT_TRUE(event.isAllDay());
        EXPECT_EQ(event.startDateTime().date(), day);
        EXPECT_EQ(event.isMinor(), event.type() != EventData::Holiday);
        if (event.type() == EventData::Holiday) holidays.push_back(event.title().toStdString());
    }
    EXPECT_EQ(holidays, std::vector<std::string>{"फूलपाति"});
    EXPECT_EQ(events.count(day), 3);

    const QDate ofAGroup(2026, 11, 24);  // Guru Nanak's day, on which not all stay at home
    ask(ofAGroup, ofAGroup);
    QSet<QString> uids;
    int off = 0;
    for (const EventData& event : events.values(ofAGroup)) {
        uids.insert(event.uid());
        off += event.type() == EventData::Holiday ? 1 : 0;
    }
    EXPECT_EQ(off, 1);
    EXPECT_EQ(uids.size(), events.count(ofAGroup));
}

// What makes one festival of a day doubtful says nothing of another.
TEST_F(CalendarOfPlasma, TellsOfEachFestivalHowSureItIs) {
    const auto described = [this](const QDate& day, int id) {
        ask(day, day);
        for (const EventData& event : events.values(day)) {
            if (event.uid().endsWith(QString("-%1").arg(id))) return event.description().toStdString();
        }
        return std::string{"none"};
    };
    const QDate published(2022, 8, 11), later(2028, 10, 11);
    EXPECT_TRUE(described(published, 257).starts_with("the reckoning leaves open"));
    EXPECT_EQ(described(published, 207), "");
    EXPECT_TRUE(described(later, 323).ends_with("leaves this day open"));
    EXPECT_TRUE(described(later, 505).ends_with("surely so"));
}

TEST_F(CalendarOfPlasma, FollowsTheEditionThatIsChosen) {
    const QDate day(2026, 11, 23);
    ask(day, day);
    EXPECT_EQ(dateOn(day), "2083-8-7");
    home_.write("dinmala/preferences.ini", "[display]\nedition=first\n");
    ask(day, day);
    EXPECT_EQ(dateOn(day), "2083-8-8");
    EXPECT_TRUE(events.isEmpty());
    home_.write("dinmala/preferences.ini", "[display]\nedition=current\n");
    ask(day, day);
    EXPECT_EQ(dateOn(day), "2083-8-7");
}

TEST_F(CalendarOfPlasma, FollowsTheLookThatIsChosen) {
    home_.write("dinmala/preferences.ini", "[display]\nlanguage=english\ndigits=western\n");
    const QDate day(2026, 10, 17);
    ask(day, day);
    const auto label = labels.value(day);
    EXPECT_EQ(label.label.toStdString(), "31 Ashwin 2083, Saptami");
    EXPECT_EQ((label.dayLabel + label.monthLabel + label.yearLabel).toStdString(), "31Ashwin2083");
    bool named = false;
    for (const EventData& event : events.values(day)) named = named || event.title() == QString("Phulpati");
    EXPECT_TRUE(named);
    home_.write("dinmala/preferences.ini", "[display]\n");
}

// Whoever asks for all of time gets what there is; nobody is kept waiting for a year that is flipped through.
TEST_F(CalendarOfPlasma, EndsWhereTheCalendarEnds) {
    for (const auto& [from, to] : {std::pair{QDate(1900, 1, 1), QDate(1900, 2, 1)},
                                   {QDate(2026, 2, 1), QDate(2026, 1, 1)},
                                   {QDate(), QDate(2026, 1, 1)}}) {
        ask(from, to);
        EXPECT_TRUE(dates.isEmpty());
    }
    ask(QDate(1942, 4, 12), QDate(1942, 4, 14));
    EXPECT_EQ(dates.size(), 2);
    ask(QDate(2043, 4, 1), QDate(9999, 1, 1));
    EXPECT_FALSE(dates.isEmpty());
    EXPECT_EQ(dateOn(QDate(2043, 4, 1)).substr(0, 7), "2099-12");

    const std::clock_t began = std::clock();
    for (int month = 1; month <= 12; ++month) {
        const QDate first(2027, month, 1);
        ask(first.addDays(-6), first.addDays(35));
        EXPECT_EQ(dates.size(), 42);
    }
    const std::clock_t took = std::clock() - began;  // of the processor's time, whatever else runs
    RecordProperty("year_us", std::to_string(took * 1'000'000 / CLOCKS_PER_SEC));
    EXPECT_LE(took, CLOCKS_PER_SEC / 20);
}

}  // namespace
}  // namespace dinmala
