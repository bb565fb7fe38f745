// The refresh: from a new store to the pieces, the labels, the menu lines and
// the status item.
#include "app/AppDelegate.h"
#include "calendar/DataStoreFunctions.h"
#include "calendar/MonthRecord.h"
#include "calendar/Text.h"

namespace dinmala {

namespace {

/// Stands for a piece that cannot be told, on a day outside the month table.
constexpr std::string_view kUnknown = "–";
constexpr std::string_view kOutsideTable = "आजको मिति पात्रोमा छैन";  // today's date is not in the calendar

struct Pieces {
    std::string year, month, day, dow, time, tithi, event;
};

Pieces piecesOf(const DataStore& ds) {
    Pieces pieces;
    const std::string year = std::to_string(ds.currentBSYear());
    pieces.year = DataStoreFunctions::convertStringNumber2Nepali(year);
    pieces.month = ds.getMonthName("bs", "long", ds.currentBSMonth());
    pieces.day = DataStoreFunctions::getNepaliDateDigitFor(static_cast<std::int32_t>(ds.getBsCurrentDay()));
    pieces.dow = ds.getWeekDayName("bs", "short", static_cast<std::uint64_t>(intValue(ds.getCurrentBSDayOfWeek())));
    pieces.time = ds.getCurrentBSTime();
    if (!ds.coversToday()) {
        pieces.year = pieces.month = pieces.day = pieces.tithi = kUnknown;
        pieces.event = kOutsideTable;
        return pieces;
    }
    const std::string dayMonth = padded(ds.getBsCurrentDay(), 2) + padded(ds.currentBSMonth(), 2);
    pieces.tithi = joined(ds.getDayTithi(year, dayMonth), "/ ");
    pieces.event = joined(ds.getDayEvent(year, dayMonth), "/ ");
    return pieces;
}

void write(Label* label, const std::string& text) {
    if (label != nullptr) label->setStringValue(text);
}

void write(MenuItem* item, std::string text) {
    if (item != nullptr) item->setTitle(std::move(text));
}

}  // namespace

void AppDelegate::updateData() {
    ds_ = std::make_unique<DataStore>(platform_.clock);
    const Pieces pieces = piecesOf(*ds_);

    write(outlets_.txtYear, pieces.year);
    write(outlets_.txtMonth, pieces.month);
    write(outlets_.txtDay, pieces.day);
    write(outlets_.txtDow, pieces.dow);
    write(outlets_.txtTime, pieces.time);
    write(outlets_.txtTithi, pieces.tithi);
    write(outlets_.txtEvent, pieces.event);

    write(outlets_.dateMenuItem,
          pieces.year + " " + pieces.month + " " + pieces.day + " " + pieces.dow + " " + pieces.time);
    write(outlets_.descriptionMenuItem, pieces.tithi + ", " + pieces.event);

    statusItem_->setImage(nullptr);
    statusItem_->setAlternateImage(nullptr);
    statusItem_->setTitle(std::nullopt);
    if (prefs_->boolForKey("icon")) {
        statusImage_ = loadResource("NepalFlag");
        statusHighLightImage_ = loadResource("NepalFlag");
        statusItem_->setImage(statusImage_);
        statusItem_->setAlternateImage(statusHighLightImage_);
        return;
    }
    std::string title;
    if (prefs_->boolForKey("year")) title = pieces.year;
    // Joined to an empty start too: without the year the title begins with a
    // blank. That is deliberate.
    const auto append = [&](std::string_view key, const std::string& piece) {
        if (prefs_->boolForKey(key)) title += " " + piece;
    };
    append("month", pieces.month);
    append("day", pieces.day);
    append("dow", pieces.dow);
    append("time", pieces.time);
    append("tithi", pieces.tithi);
    append("event", pieces.event);
    statusItem_->setTitle(std::move(title));
}

}  // namespace dinmala
