#include "dates/date_difference.h"

#include <limits>
#include <utility>

#include "dates/calendar_difference.h"
#include "dates/date_objects.h"
#include "frame/contract/host_reference.h"
#include "frame/contract/instance_data.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

DateDifferenceData& DataOf(REALobject difference) {
  return *InstanceData<DateDifferenceData>(gDateDifferenceClass, difference);
}

void ReleaseDates(DateDifferenceData& data) {
  DropHeld(data.startDate);
  DropHeld(data.endDate);
}

// Truncates toward zero and clamps to the range of the integer type. NaN becomes 0.
std::int64_t Truncated(double value) {
  constexpr double kLimit = 9223372036854775808.0;
  if (value >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (value < -kLimit) return std::numeric_limits<std::int64_t>::min();
  return value == value ? static_cast<std::int64_t>(value) : 0;
}

// Swaps the moments if the end is before the start.
void BringIntoOrder(DateDifferenceData& data) {
  data.swap = IsLater(data.start, data.end);
  if (data.swap != 0) {
    std::swap(data.start, data.end);
    std::swap(data.startDate, data.endDate);
    std::swap(data.startTotalSeconds, data.endTotalSeconds);
  }
  Trace("swap", static_cast<int>(data.swap));
}

void CalculateSeconds(DateDifferenceData& data) {
  data.totalSeconds = data.endTotalSeconds - data.startTotalSeconds;
  const double days = data.totalSeconds / 24.0 / 60.0 / 60.0;
  data.totalDay = Truncated(days);
  Trace("eTotalSeconds", data.endTotalSeconds);
  Trace("sTotalSeconds", data.startTotalSeconds);
  Trace("TotalSeconds", data.totalSeconds);
  Trace("totalday", days);
  Trace("totalday", data.totalDay);
}

// Calculates the result from the calendar fields and seconds, which must already be filled in.
void Calc(DateDifferenceData& data) {
  TraceFields(data.start, data.end);
  BringIntoOrder(data);
  CalculateSeconds(data);
  data.result = CalendarDifference(data.start, data.end);
  TraceFields(data.result);
  data.ready = true;
}

bool ReadFields(REALobject date, CalendarFields* fields) {
  for (const CalendarProperty& property : kCalendarProperties)
    if (!ReadCalendarField(date, property, fields)) return false;
  return true;
}

// The two kinds of dates differ only in how their seconds are read.
template <class Date>
bool CalcDates(REALobject difference, Date startDate, Date endDate, double (*secondsOf)(Date)) {
  DateDifferenceData& data = DataOf(difference);
  ReleaseDates(data);
  data = {};
  if (startDate == nullptr || endDate == nullptr) return false;
  data.startDate = reinterpret_cast<REALobject>(startDate);
  data.endDate = reinterpret_cast<REALobject>(endDate);
  REALLockObject(data.startDate);
  REALLockObject(data.endDate);
  if (!ReadFields(data.startDate, &data.start) || !ReadFields(data.endDate, &data.end)) return false;
  data.endTotalSeconds = secondsOf(endDate);
  data.startTotalSeconds = secondsOf(startDate);
  Calc(data);
  return true;
}

template <class Date>
REALobject NewDifference(Date startDate, Date endDate, REALboolean (*calculate)(REALobject, Date, Date)) {
  OwnedObject difference(REALnewInstance("DateDifferenceZKT"));
  if (!difference || !calculate(difference.Get(), startDate, endDate)) return nullptr;
  return difference.Release();
}

}  // namespace

REALboolean CalcDates(REALobject difference, REALdate startDate, REALdate endDate) {
  return CalcDates(difference, startDate, endDate, GetTotalSeconds);
}

REALboolean CalcDatesV(REALobject difference, REALdateTime startDate, REALdateTime endDate) {
  return CalcDates(difference, startDate, endDate, GetDateTimeSecondsFrom1970);
}

REALobject DifferenceZKT(REALdate startDate, REALdate endDate) { return NewDifference(startDate, endDate, CalcDates); }

REALobject DifferenceZKTdt(REALdateTime startDate, REALdateTime endDate) {
  return NewDifference(startDate, endDate, CalcDatesV);
}

void ConstructDateDifference(REALobject /*difference*/) {}

void ConstructDateDifferenceFromDates(REALobject difference, REALdate startDate, REALdate endDate) {
  CalcDates(difference, startDate, endDate);
}

void ConstructDateDifferenceFromDateTimes(REALobject difference, REALdateTime startDate, REALdateTime endDate) {
  CalcDatesV(difference, startDate, endDate);
}

void DateDifferenceDesturctor(REALobject difference) { ReleaseDates(DataOf(difference)); }

REALboolean isLeapYear(std::int64_t year) { return IsLeapYear(year); }

// clang-format off
double getStartTotalSeconds(REALobject difference, std::int64_t) { return DataOf(difference).startTotalSeconds; }
double getEndTotalSeconds  (REALobject difference, std::int64_t) { return DataOf(difference).endTotalSeconds; }
double getTotalSeconds     (REALobject difference, std::int64_t) { return DataOf(difference).totalSeconds; }
void setStartTotalSeconds(REALobject difference, std::int64_t, double seconds) { DataOf(difference).startTotalSeconds = seconds; }
void setEndTotalSeconds  (REALobject difference, std::int64_t, double seconds) { DataOf(difference).endTotalSeconds = seconds; }
void setTotalSeconds     (REALobject difference, std::int64_t, double seconds) { DataOf(difference).totalSeconds = seconds; }
// clang-format on

}  // namespace zkt
