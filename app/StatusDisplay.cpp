// The refresh: from a new store to the pieces, the labels, the menu lines and
// the status item.
#include <utility>
#include <vector>

#include "agenda/Today.h"
#include "app/AppDelegate.h"
#include "app/Pieces.h"

namespace dinmala {

namespace {

void write(MenuItem* item, std::string text) {
    if (item != nullptr) item->setTitle(std::move(text));
}

}  // namespace

void AppDelegate::updateData() { refresh(platform_.clock()); }

void AppDelegate::refresh(Moment now) {
    if (prefs_->reload()) updateMenuItems();
    const EditionId edition = editionId();
    std::optional<AlmanacDay> almanac;
    StoreTexts store;
    if (edition == EditionId::current) {
        // The almanac tells the day's tithis and events; the store's lists stay empty.
        const Edition& current = platform_.edition(edition);
        store = {{}, {}, {}, current.calendar, {}};
        const auto date = current.calendar.toDate(nepalDay(std::chrono::floor<std::chrono::seconds>(now)));
        if (date) almanac = current.almanac.day(*date);
    }
    ds_ = std::make_unique<DataStore>([now] { return now; }, store);
    const Today today{*ds_, almanac ? &*almanac : nullptr};
    showEdition(edition, today.almanac);
    showTelling();
    std::vector<std::string> texts;
    texts.reserve(pieces().size());
    for (const Piece& piece : pieces()) texts.push_back(piece.text(today));
    const auto textOf = [&](std::string_view key) -> const std::string& {
        std::size_t at = 0;
        while (pieces()[at].key != key) ++at;
        return texts[at];
    };

    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (Label* label = labelOf(pieces()[i], outlets_)) label->setStringValue(texts[i]);
    }
    write(outlets_.dateMenuItem,
          textOf("year") + " " + textOf("month") + " " + textOf("day") + " " + textOf("dow") + " " + textOf("time"));
    // The comma stands alone on a day without lists, in the first edition; that is deliberate.
    const bool noEvent = today.almanac != nullptr && textOf("event").empty();
    write(outlets_.descriptionMenuItem, noEvent ? textOf("tithi") : textOf("tithi") + ", " + textOf("event"));

    showTitle(texts);
    tellOfFestivals(now);
}

void AppDelegate::showTitle(const std::vector<std::string>& texts) {
    statusItem_->setImage(nullptr);
    statusItem_->setAlternateImage(nullptr);
    statusItem_->setTitle(std::nullopt);
    if (prefs_->boolForKey(kFlagKey)) {
        statusImage_ = loadResource("NepalFlag");
        statusHighLightImage_ = loadResource("NepalFlag");
        statusItem_->setImage(statusImage_);
        statusItem_->setAlternateImage(statusHighLightImage_);
        return;
    }
    // The year takes the place of the empty start; any other piece is joined to
    // it, so that without the year the title begins with a blank. That is deliberate.
    std::string title;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (!prefs_->boolForKey(pieces()[i].key)) continue;
        title = i == 0 ? texts[i] : title + " " + texts[i];
    }
    statusItem_->setTitle(std::move(title));
}

}  // namespace dinmala
