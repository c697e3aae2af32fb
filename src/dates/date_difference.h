// The DateDifferenceZKT class: the difference between two Date or two DateTime objects in calendar units, in whole days
// and in seconds. If the end is before the start, the two are swapped, and the object records the swap. Names such as
// DateDifferenceDesturctor are fixed by the host's interface.
#pragma once

#include <cstddef>

#include "dates/calendar_fields.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The instance data. The declared properties tell the host the offsets of the fields. All fields are 0 in a new object.
struct DateDifferenceData {
  double endTotalSeconds;
  double startTotalSeconds;
  double totalSeconds;
  REALobject endDate;  // owns a reference, as does startDate
  REALobject startDate;
  CalendarFields result;
  CalendarFields start;
  CalendarFields end;
  std::int64_t totalDay;  // whole days, truncated toward zero
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

// The class record. The catalogue fills it in, and the host stores the offset of the instance data in it.
inline REALclassDefinition gDateDifferenceClass = {};

// Fill the object from two dates and calculate the difference. The object releases its former dates and retains the new
// dates. If a date is nil, leave the object empty and return false. If the host cannot read a field of a date, keep the
// dates and the fields read so far and return false.
REALboolean CalcDates(REALobject difference, REALdate startDate, REALdate endDate);
REALboolean CalcDatesV(REALobject difference, REALdateTime startDate, REALdateTime endDate);

// Return a new object with the difference. The caller owns the object. Return nil if the object cannot be created or
// the difference cannot be calculated.
REALobject DifferenceZKT(REALdate startDate, REALdate endDate);
REALobject DifferenceZKTdt(REALdateTime startDate, REALdateTime endDate);

// Constructors of the class. If the calculation fails, `ready` stays false.
void ConstructDateDifference(REALobject difference);
void ConstructDateDifferenceFromDates(REALobject difference, REALdate startDate, REALdate endDate);
void ConstructDateDifferenceFromDateTimes(REALobject difference, REALdateTime startDate, REALdateTime endDate);

// Releases the object's dates.
void DateDifferenceDesturctor(REALobject difference);

// Returns whether a year is a leap year by the Gregorian rule.
REALboolean isLeapYear(std::int64_t year);

// Accessors for the seconds. They are necessary because the host cannot access doubles in the instance data directly.
// `parameter` is unused.
double getStartTotalSeconds(REALobject difference, std::int64_t parameter);
double getEndTotalSeconds(REALobject difference, std::int64_t parameter);
double getTotalSeconds(REALobject difference, std::int64_t parameter);
void setStartTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);
void setEndTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);
void setTotalSeconds(REALobject difference, std::int64_t parameter, double seconds);

}  // namespace zkt
