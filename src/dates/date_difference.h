// The class DateDifferenceZKT: the difference between two Date or two DateTime objects in calendar units, in whole days
// and in seconds. If the end is before the start, the two are swapped, and the object records it. Names such as
// DateDifferenceDesturctor are fixed by the host's interface.
#pragma once

#include <cstddef>

#include "dates/calendar_fields.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The instance data. The declared properties give its offsets to the host. All zero in a new object.
struct DateDifferenceData {
  double endTotalSeconds;
  double startTotalSeconds;
  double totalSeconds;
  REALobject endDate;  // owns a reference, like startDate
  REALobject startDate;
  CalendarFields result;
  CalendarFields start;
  CalendarFields end;
  std::int64_t totalDay;  // whole days, truncated towards zero
  std::int64_t reserved1;
  alignas(8) REALboolean swap;  // whether start and end were swapped
  std::int64_t reserved2;
  alignas(8) REALboolean ready;  // whether there is a result
  std::int64_t reserved3;
};
static_assert(sizeof(DateDifferenceData) == 232);
static_assert(offsetof(DateDifferenceData, endDate) == 24);
static_assert(offsetof(DateDifferenceData, result) == 40);
static_assert(offsetof(DateDifferenceData, start) == 88);
static_assert(offsetof(DateDifferenceData, end) == 136);
static_assert(offsetof(DateDifferenceData, totalDay) == 184);
static_assert(offsetof(DateDifferenceData, swap) == 200);
static_assert(offsetof(DateDifferenceData, ready) == 216);

// The record of the class. The catalogue fills it in, and it holds the offset of the instance data.
inline REALclassDefinition gDateDifferenceClass = {};

// Fill the object from two dates and calculate. The object releases its former dates and retains the new ones. Return
// false for a nil date, which leaves the object empty, and for a date whose fields the host cannot read, which leaves
// the fields read so far.
REALboolean CalcDates(REALobject difference, REALdate startDate, REALdate endDate);
REALboolean CalcDatesV(REALobject difference, REALdateTime startDate, REALdateTime endDate);

// Return a new object with the difference, which the caller owns, or nil if it cannot be created or calculated.
REALobject DifferenceZKT(REALdate startDate, REALdate endDate);
REALobject DifferenceZKTdt(REALdateTime startDate, REALdateTime endDate);

// Constructors of the class. If the calculation fails, the object is not ready.
void ConstructDateDifference(REALobject difference);
void ConstructDateDifferenceFromDates(REALobject difference, REALdate startDate, REALdate endDate);
void ConstructDateDifferenceFromDateTimes(REALobject difference, REALdateTime startDate, REALdateTime endDate);

// Releases the dates of the object.
void DateDifferenceDesturctor(REALobject difference);

// Applies the rule of the Gregorian calendar.
REALboolean isLeapYear(std::int64_t year);

// Return the seconds of the dates, which the host cannot read directly. The parameter is unused.
double getStartTotalSeconds(REALobject difference, std::int64_t parameter);
double getEndTotalSeconds(REALobject difference, std::int64_t parameter);
double getTotalSeconds(REALobject difference, std::int64_t parameter);
void setStartTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);
void setEndTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);
void setTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);

}  // namespace zkt
