/// The Bikram Sambat calendar in the calendar that Plasma's clock opens: the date under each day, festivals in its
/// list.
#pragma once

#include <CalendarEvents/CalendarEventsPlugin>

#include "agenda/EditionSource.h"
#include "desktop/KeyFilePreferences.h"

namespace dinmala {

class CalendarPlugin : public CalendarEvents::CalendarEventsPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.kde.CalendarEventsPlugin" FILE "dinmala.json")
    Q_INTERFACES(CalendarEvents::CalendarEventsPlugin)

public:
    explicit CalendarPlugin(QObject* parent = nullptr);

    /// Tells of the days from one to another before it returns, in the edition, language and digits that the user has
    /// chosen, and in the years that lie in folders now. Of days outside the calendar nothing is told.
    void loadEventsForDateRange(const QDate& startDate, const QDate& endDate) override;

private:
    KeyFilePreferences preferences_;
    EditionSource editions_;
};

}  // namespace dinmala
