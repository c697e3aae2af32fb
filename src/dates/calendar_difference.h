// The difference between two moments in years, months, days, hours, minutes and seconds, computed from the six calendar
// fields of each moment. Arithmetic wraps modulo 2^64. The running time is bounded for any fields.
#pragma once

#include "dates/calendar_fields.h"

namespace zkt {

// Returns whether a year is a leap year by the Gregorian rule, which is applied to any year.
bool IsLeapYear(std::int64_t year);

// Returns whether `a` is after `b`, compared by year, month, day, hour, minute and second.
bool IsLater(const CalendarFields& a, const CalendarFields& b);

// Returns the difference from `start` to `end`. `end` must not be before `start`. Missing days are borrowed from the
// months before the end month, going backward. For example, the difference from 31 January to 1 March is 29 days in a
// common year and 30 days in a leap year. Traces the steps while debugging is on.
CalendarFields CalendarDifference(const CalendarFields& start, const CalendarFields& end);

// Trace the six fields of one moment or of two moments, one line per field.
void TraceFields(const CalendarFields& fields);
void TraceFields(const CalendarFields& start, const CalendarFields& end);

}  // namespace zkt
