// The calendar in a terminal: what stands where at which size, and where keys lead.
#include "app/faces/terminal/TerminalPage.h"

#include <gtest/gtest.h>

#include <clocale>

#include "app/faces/terminal/TerminalText.h"

namespace dinmala {
namespace {

using namespace std::chrono;
using Key = TerminalKey;
using Look = TerminalLine::Look;

class TerminalPageTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr); }

    std::wstring screen(int width, int height) {
        std::wstring text;
        for (const TerminalLine& line : shown.lines(width, height)) {
            text += line.text.substr(0, line.text.find_last_not_of(L' ') + 1) + L'\n';
        }
        return text;
    }
    /// What is marked as chosen; one part of the screen, or none.
    std::wstring chosen(int width, int height) {
        std::wstring text;
        for (const TerminalLine& line : shown.lines(width, height)) {
            for (const auto& span : line.spans) {
                if (span.look == Look::selected) text += line.text.substr(span.begin, span.end - span.begin);
            }
            if (line.look == Look::selected) text += line.text;
        }
        return text;
    }

    TerminalPage shown{Page{currentEdition(), sys_days{2026y / 12 / 23}, {Language::english, Digits::western}}};
};

TEST_F(TerminalPageTest, ShowsAMonthWithItsChosenDay) {
    EXPECT_EQ(screen(60, 15),
              L"Poush 2083 (Dec 2026/Jan 2027)\n"
              L" Sun     Mon     Tue     Wed     Thu     Fri     Sat\n"
              L"                          1 16    2 17    3 18    4 19\n"
              L"  5 20    6 21    7 22  [ 8 23]   9*24   10*25   11 26\n"
              L" 12 27   13 28   14 29   15*30   16 31   17  1   18  2\n"
              L" 19  3   20  4   21  5   22  6   23  7   24  8   25  9\n"
              L" 26 10   27*11   28 12   29 13   30 14\n" +
                  std::wstring(59, L'─') +
                  L"\nWednesday, 8 Poush 2083, 23 December 2026, Shukla\n"
                  L"Chaturdashi, दत्तात्रती जयन्ती, काशिस्थ पिशाचमोचन, Purnima\n"
                  L"fast, today\n"
                  L"* public holiday\n"
                  L"←→↑↓ day, week · PgUp PgDn month · < > year · Home today ·\n"
                  L"Enter details · u upcoming · d digits · n names · Esc menu\n"
                  L"· q quit\n");
    EXPECT_TRUE(screen(60, 13).ends_with(L"today\n* public holiday\nEnter details · u upcoming · Esc menu\n"));
    EXPECT_EQ(chosen(60, 14), L"[ 8 23]");
    EXPECT_EQ(chosen(30, 8), L"[ 8]");
    EXPECT_EQ(screen(60, 9).find(L"Esc menu"), std::wstring::npos);
    shown.setMessage("cannot be kept");
    EXPECT_NE(screen(60, 14).find(L"cannot be kept"), std::wstring::npos);
    EXPECT_TRUE(shown.press(Key::right));
    EXPECT_EQ(screen(60, 14).find(L"cannot be kept"), std::wstring::npos);
    EXPECT_EQ(chosen(30, 8), L"  9*");
    EXPECT_TRUE(shown.press(Key::digits));
    EXPECT_EQ(chosen(30, 8), L"  ९*");
    for (const Key key : {Key::down, Key::pageDown, Key::yearForward, Key::up, Key::left})
        EXPECT_TRUE(shown.press(key));
    EXPECT_EQ(shown.page().chosen(), *currentEdition().calendar.toDays(bsDate(2084, 10, 8)));
    EXPECT_TRUE(shown.press(Key::home));
    EXPECT_EQ(shown.page().chosen(), shown.page().today());
    EXPECT_FALSE(shown.press(Key::back));
}

TEST_F(TerminalPageTest, LeadsToDetailsAndUpcomingAndBack) {
    EXPECT_TRUE(shown.press(Key::choose));
    EXPECT_NE(screen(80, 24).find(L"\nSunrise: 06:5"), std::wstring::npos);
    EXPECT_TRUE(shown.press(Key::right));
    EXPECT_TRUE(screen(80, 24).starts_with(L"9 Poush 2083\n"));
    EXPECT_FALSE(screen(30, 5).find(L"Sunrise") != std::wstring::npos);
    EXPECT_TRUE(shown.press(Key::end));
    EXPECT_NE(screen(30, 5).find(L"Sunrise"), std::wstring::npos);
    EXPECT_TRUE(shown.press(Key::back));

    EXPECT_TRUE(shown.press(Key::upcoming));
    EXPECT_TRUE(shown.press(Key::left));
    EXPECT_TRUE(screen(80, 24).starts_with(L"Upcoming · public holidays\n> Udhauli"));
    EXPECT_TRUE(shown.press(Key::end));
    EXPECT_FALSE(chosen(40, 7).empty());
    // Several keys before it is drawn again.
    for (const Key key : {Key::pageDown, Key::pageDown, Key::choose, Key::upcoming, Key::pageUp, Key::choose}) {
        EXPECT_TRUE(shown.press(key));
    }
    EXPECT_EQ(shown.page().chosen(), sys_days{2026y / 12 / 24});
    EXPECT_TRUE(shown.press(Key::upcoming));
    EXPECT_TRUE(shown.press(Key::home));
    EXPECT_TRUE(shown.press(Key::up));  // the first stays
    EXPECT_TRUE(shown.press(Key::down));
    EXPECT_TRUE(shown.press(Key::down));
    EXPECT_TRUE(shown.press(Key::choose));
    EXPECT_EQ(chosen(80, 24), L" 10*25 ");
    // Another edition while the list is open: its own list, or why there is none.
    EXPECT_TRUE(shown.press(Key::upcoming));
    shown.update(firstEdition(), shown.page().today(), shown.page().look());
    EXPECT_NE(screen(80, 24).find(L"this edition tells no holidays"), std::wstring::npos);
    EXPECT_TRUE(shown.press(Key::choose));
}

// Whatever the size: nothing is wider or higher than the screen, and what is chosen is on it where days are.
TEST_F(TerminalPageTest, FitsEverySize) {
    for (const Key view : {Key::home, Key::choose, Key::upcoming}) {
        EXPECT_TRUE(shown.press(view));
        for (int width = 1; width <= 90; width += width < 12 ? 1 : 7) {
            for (int height = 1; height <= 26; height += height < 12 ? 1 : 5) {
                const auto lines = shown.lines(width, height);
                ASSERT_LE(lines.size(), static_cast<std::size_t>(height));
                for (const TerminalLine& line : lines) {
                    ASSERT_LE(columnsOf(line.text), std::max(1, width - 1)) << width << "x" << height;
                }
                ASSERT_TRUE(view != Key::home || width < 30 || !chosen(width, height).empty()) << height;
            }
        }
        EXPECT_TRUE(view == Key::home || shown.press(Key::back));
    }
}

}  // namespace
}  // namespace dinmala
