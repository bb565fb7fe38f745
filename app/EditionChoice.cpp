// Which edition of the calendar is shown: asked for at the start, chosen in the menu, kept in the preferences.
#include "agenda/EditionChoice.h"
#include "agenda/Sentences.h"
#include "app/AppDelegate.h"
#include "app/Pieces.h"
#include "i18n/Translation.h"

namespace dinmala {

EditionId AppDelegate::editionId() const {
    if (!platform_.edition) return EditionId::first;
    return chosenEdition(platform_.askedEdition, prefs_->textForKey(kEditionKey));
}

const Edition& AppDelegate::edition() const {
    return platform_.edition ? platform_.edition(editionId()) : firstEdition();
}

void AppDelegate::beginWithEdition() {
    if (!platform_.edition || !prefs_->textForKey(kEditionKey).empty()) return;
    if (editionId() != EditionId::current) return;  // asked for the other: told when the current one is shown
    // Choices of the time before there were editions: the date may be another one today than it was yesterday.
    bool isOld = prefs_->boolForKey(kFlagKey);
    for (const Piece& piece : pieces()) isOld = isOld || prefs_->boolForKey(piece.key);
    if (isOld && platform_.tell) {
        platform_.tell(
            tr("Dinmala now shows the calendar as Nepal publishes it today; its menu has the one of before too."));
    }
    prefs_->setTextForKey(editionName(EditionId::current), kEditionKey);
}

void AppDelegate::setEdition(EditionId edition) {
    platform_.askedEdition.reset();
    prefs_->reload();  // another session may have chosen since: this click is the later choice
    prefs_->setTextForKey(editionName(edition), kEditionKey);
    prefs_->synchronize();
    updateData();
}

void AppDelegate::setCurrentEdition(Sender) { setEdition(EditionId::current); }
void AppDelegate::setFirstEdition(Sender) { setEdition(EditionId::first); }

void AppDelegate::showEdition(EditionId edition, const AlmanacDay* today) {
    mark(outlets_.currentEditionMenuItem, edition == EditionId::current);
    mark(outlets_.firstEditionMenuItem, edition == EditionId::first);
    if (outlets_.noteMenuItem == nullptr) return;
    const std::string note = today != nullptr ? trustNote(*today) : std::string{};
    outlets_.noteMenuItem->setTitle(note);
    outlets_.noteMenuItem->setHidden(note.empty());
}

}  // namespace dinmala
