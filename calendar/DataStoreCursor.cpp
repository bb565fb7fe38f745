// The month cursors: moves and record fields.
#include <utility>

#include "calendar/DataStore.h"
#include "calendar/MonthRecord.h"

namespace dinmala {

namespace {

std::uint64_t number(const std::string& record, Field field) {
    return static_cast<std::uint64_t>(std::int64_t{fieldValue(record, field)});
}

}  // namespace

void DataStore::show(std::uint64_t index) {
    sm_index_ = index;
    nm_index_ = index + 1;
    pm_index_ = index - 1;  // wraps for the first month: no such index
    sm_data_ = recordAt(sm_index_);
    nm_data_ = recordAt(nm_index_);
    pm_data_ = recordAt(pm_index_);
}

void DataStore::nextMonth() {
    if (sm_index_ + 1 < recordCount()) show(sm_index_ + 1);
}

void DataStore::previousMonth() {
    if (sm_index_ > 0) show(sm_index_ - 1);
}

void DataStore::currentMonth() { show(cm_index_); }

void DataStore::seekByBsDate(std::string_view bsDate) { show(findIndexByBs(bsDate)); }

void DataStore::seekByAdDate(std::string_view adDate) { show(findIndexByAd(adDate)); }

void DataStore::setCm_data(std::string record) { cm_data_ = std::move(record); }
void DataStore::setSm_data(std::string record) { sm_data_ = std::move(record); }
void DataStore::setNm_data(std::string record) { nm_data_ = std::move(record); }
void DataStore::setPm_data(std::string record) { pm_data_ = std::move(record); }

std::uint64_t DataStore::showingBSMonth() const { return number(sm_data_, record::kBsMonth); }
std::uint64_t DataStore::showingBSYear() const { return number(sm_data_, record::kBsYear); }
std::uint64_t DataStore::showingBSNoOfDays() const { return number(sm_data_, record::kBsNoOfDays); }
std::uint64_t DataStore::showingADStartYear() const { return number(sm_data_, record::kAdStartYear); }
std::uint64_t DataStore::showingADStartMonth() const { return number(sm_data_, record::kAdStartMonth); }
std::uint64_t DataStore::showingADStartDay() const { return number(sm_data_, record::kAdStartDay); }
std::uint64_t DataStore::showingADEndYear() const { return number(sm_data_, record::kAdEndYear); }
std::uint64_t DataStore::showingADEndMonth() const { return number(sm_data_, record::kAdEndMonth); }
std::uint64_t DataStore::showingADEndDay() const { return number(sm_data_, record::kAdEndDay); }
std::uint64_t DataStore::showingBSFirstWeekDay() const { return number(sm_data_, record::kFirstWeekDay); }

std::uint64_t DataStore::nextBSMonth() const { return number(nm_data_, record::kBsMonth); }
std::uint64_t DataStore::nextBSYear() const { return number(nm_data_, record::kBsYear); }
std::uint64_t DataStore::nextBSNoOfDays() const { return number(nm_data_, record::kBsNoOfDays); }
std::uint64_t DataStore::nextADStartYear() const { return number(nm_data_, record::kAdStartYear); }
std::uint64_t DataStore::nextADStartMonth() const { return number(nm_data_, record::kAdStartMonth); }
std::uint64_t DataStore::nextADStartDay() const { return number(nm_data_, record::kAdStartDay); }
std::uint64_t DataStore::nextADEndYear() const { return number(nm_data_, record::kAdEndYear); }
std::uint64_t DataStore::nextADEndMonth() const { return number(nm_data_, record::kAdEndMonth); }
std::uint64_t DataStore::nextADEndDay() const { return number(nm_data_, record::kAdEndDay); }
std::uint64_t DataStore::nextBSFirstWeekDay() const { return number(nm_data_, record::kFirstWeekDay); }

std::uint64_t DataStore::previousBSMonth() const { return number(pm_data_, record::kBsMonth); }
std::uint64_t DataStore::previousBSYear() const { return number(pm_data_, record::kBsYear); }
std::uint64_t DataStore::previousBSNoOfDays() const { return number(pm_data_, record::kBsNoOfDays); }
std::uint64_t DataStore::previousADStartYear() const { return number(pm_data_, record::kAdStartYear); }
std::uint64_t DataStore::previousADStartMonth() const { return number(pm_data_, record::kAdStartMonth); }
std::uint64_t DataStore::previousADStartDay() const { return number(pm_data_, record::kAdStartDay); }
std::uint64_t DataStore::previousADEndYear() const { return number(pm_data_, record::kAdEndYear); }
std::uint64_t DataStore::previousADEndMonth() const { return number(pm_data_, record::kAdEndMonth); }
std::uint64_t DataStore::previousADEndDay() const { return number(pm_data_, record::kAdEndDay); }
std::uint64_t DataStore::previousBSFirstWeekDay() const { return number(pm_data_, record::kFirstWeekDay); }

std::uint64_t DataStore::currentBSMonth() const { return number(cm_data_, record::kBsMonth); }
std::uint64_t DataStore::currentBSYear() const { return number(cm_data_, record::kBsYear); }
std::uint64_t DataStore::currentBSNoOfDays() const { return number(cm_data_, record::kBsNoOfDays); }
std::uint64_t DataStore::currentADStartYear() const { return number(cm_data_, record::kAdStartYear); }
std::uint64_t DataStore::currentADStartMonth() const { return number(cm_data_, record::kAdStartMonth); }
std::uint64_t DataStore::currentADStartDay() const { return number(cm_data_, record::kAdStartDay); }
std::uint64_t DataStore::currentADEndYear() const { return number(cm_data_, record::kAdEndYear); }
std::uint64_t DataStore::currentADEndMonth() const { return number(cm_data_, record::kAdEndMonth); }
std::uint64_t DataStore::currentADEndDay() const { return number(cm_data_, record::kAdEndDay); }
std::uint64_t DataStore::currentBSFristWeekDay() const { return number(cm_data_, record::kFirstWeekDay); }

std::uint64_t DataStore::showingADStartNoOfDays() const {
    return getNoOfDaysInMonth(showingADStartYear(), showingADStartMonth());
}

std::uint64_t DataStore::showingADEndNoOfDays() const {
    return getNoOfDaysInMonth(showingADEndYear(), showingADEndMonth());
}

}  // namespace dinmala
