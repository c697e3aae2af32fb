// How far two moments lie apart in years, months, days, hours, minutes and seconds. Knows twelve integers and nothing
// of the host. Arithmetic wraps modulo 2^64, and takes bounded time for any fields while debugging is off.
#pragma once

#include "dates/calendar_fields.h"

namespace zkt {

// The rule of the Gregorian calendar, for any year.
bool IsLeapYear(std::int64_t year);

// Whether `a` comes after `b`, compared by year, month, day, hour, minute and second.
bool IsLater(const CalendarFields& a, const CalendarFields& b);

// The distance from `start` to `end`, which must not lie before it. Days that are missing are borrowed from the months
// before the end month, backwards: from 31 January to 1 March are 29 days in a common year and 30 in a leap year.
// Traces every step while debugging is on.
CalendarFields CalendarDifference(const CalendarFields& start, const CalendarFields& end);

// Trace one line for each of the six, or for the six of both.
void TraceFields(const CalendarFields& fields);
void TraceFields(const CalendarFields& start, const CalendarFields& end);

}  // namespace zkt
