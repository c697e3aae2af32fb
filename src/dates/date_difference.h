// The class DateDifferenceZKT: the difference between two Date or two DateTime objects in calendar units, as whole days
// and as seconds. An end that lies before its start is exchanged with it, and the object says so.
#pragma once

#include <cstddef>

#include "dates/calendar_fields.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The instance data, whose offsets the declared properties share with the host. All zero in a new object.
struct DateDifferenceData {
  double endTotalSeconds;
  double startTotalSeconds;
  double totalSeconds;
  REALobject endDate;  // held with one reference, like the start
  REALobject startDate;
  CalendarFields result;
  CalendarFields start;
  CalendarFields end;
  std::int64_t totalDay;  // whole days, towards zero
  std::int64_t reserved1;
  alignas(8) REALboolean swap;  // whether start and end have been exchanged
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

// The record of the class, which the catalogue fills in. It tells where in an object the instance data lies.
inline REALclassDefinition gDateDifferenceClass = {};

// Fill the object from two dates and calculate. The dates that it held are released first, and the new ones are held.
// False for a nil date, which leaves the object empty, and for a date whose fields the host cannot read, which leaves
// those that were read.
REALboolean CalcDates(REALobject difference, REALdate startDate, REALdate endDate);
REALboolean CalcDatesV(REALobject difference, REALdateTime startDate, REALdateTime endDate);

// A new object with the difference, owned by the caller; nil when it cannot be made or calculated.
REALobject DifferenceZKT(REALdate startDate, REALdate endDate);
REALobject DifferenceZKTdt(REALdateTime startDate, REALdateTime endDate);

// The constructors of the class. One whose calculation fails leaves an object that is not ready.
void ConstructDateDifference(REALobject difference);
void ConstructDateDifferenceFromDates(REALobject difference, REALdate startDate, REALdate endDate);
void ConstructDateDifferenceFromDateTimes(REALobject difference, REALdateTime startDate, REALdateTime endDate);

// Releases the dates that the object holds.
void DateDifferenceDesturctor(REALobject difference);

// The rule of the Gregorian calendar.
REALboolean isLeapYear(std::int64_t year);

// The second counts, which the host cannot access by itself as it does the other properties. The parameter is not used.
double getStartTotalSeconds(REALobject difference, std::int64_t parameter);
double getEndTotalSeconds(REALobject difference, std::int64_t parameter);
double getTotalSeconds(REALobject difference, std::int64_t parameter);
void setStartTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);
void setEndTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);
void setTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);

}  // namespace zkt
