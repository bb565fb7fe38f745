#include "cal/Json.h"
#include "base/Names.h"

namespace dinmala::cal {

Json jsonOf(const BsDate& date, std::chrono::sys_days day) {
    return {
        {"bs", dateText(date)}, {"ad", dateText(std::chrono::year_month_day{day})}, {"weekday", weekDayNumber(day)}};
}

void addDay(Json& json, const AlmanacDay& day, bool graded, bool tithis, bool events) {
    if (tithis) {
        json["tithi"] = Json::array();
        for (const Tithi& tithi : day.tithis) json["tithi"].push_back(tithi.name);
    }
    if (events) {
        json["events"] = Json::array();
        for (const Event& event : day.events) json["events"].push_back(event.name);
    }
    const unsigned number = day.tithis.empty() ? 0 : day.tithis.front().number;
    json["tithiNumber"] = number == 0 ? Json{} : Json(number);
    json["eventIds"] = Json::array();
    for (const Event& event : day.events) json["eventIds"].push_back(event.id);
    json["holiday"] = graded ? Json(holidayName(day.holiday())) : Json{};
    json["grade"] = graded ? Json(gradeName(day.grade)) : Json{};
}

}  // namespace dinmala::cal
