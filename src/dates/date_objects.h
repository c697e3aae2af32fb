// Accesses host dates by property names and constructor declarations.
#pragma once

#include <ctime>

#include "dates/calendar_fields.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns a Date's total seconds, by which dates are compared and subtracted, or 0.0 if the host cannot provide them.
double GetTotalSeconds(REALdate date);

// Returns a DateTime's seconds since 1970, or 0.0 if `dateTime` is nil or the host cannot provide them.
double GetDateTimeSecondsFrom1970(REALdateTime dateTime);

// A calendar field of a Date or DateTime: the name of the host's property and the corresponding member.
struct CalendarProperty {
  const char* name;
  std::int64_t CalendarFields::*field;
};

// Ordered from year to second.
inline constexpr CalendarProperty kCalendarProperties[] = {
    {"Year", &CalendarFields::year}, {"Month", &CalendarFields::month},   {"Day", &CalendarFields::day},
    {"Hour", &CalendarFields::hour}, {"Minute", &CalendarFields::minute}, {"Second", &CalendarFields::second}};

// Reads one field of a Date or DateTime. Returns false if the host cannot provide it.
bool ReadCalendarField(REALobject date, const CalendarProperty& property, CalendarFields* fields);

// Converts a result of the C library's calendar functions.
CalendarFields CalendarFieldsOf(const std::tm& calendar);

// Create a date from calendar fields in local time. The caller owns the date. Return nil if the host cannot create it.
// The host normalizes fields that are out of range.
REALdate NewDate(const CalendarFields& fields);
REALdateTime NewDateTime(const CalendarFields& fields);

}  // namespace zkt
