// Host dates, accessed by the names of their properties and the declarations of their constructors.
#pragma once

#include <ctime>

#include "dates/calendar_fields.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns the second count of a Date, which defines order and differences, or 0.0 if the host cannot provide it.
double GetTotalSeconds(REALdate date);

// Returns the second count of a DateTime, or 0.0 for nil and if the host cannot provide it.
double GetDateTimeSecondsFrom1970(REALdateTime dateTime);

// A calendar field of a Date or DateTime: the name of the host's property and the corresponding member.
struct CalendarProperty {
  const char* name;
  std::int64_t CalendarFields::*field;
};

// From years to seconds.
inline constexpr CalendarProperty kCalendarProperties[] = {
    {"Year", &CalendarFields::year}, {"Month", &CalendarFields::month},   {"Day", &CalendarFields::day},
    {"Hour", &CalendarFields::hour}, {"Minute", &CalendarFields::minute}, {"Second", &CalendarFields::second}};

// Reads one field of a Date or DateTime. Returns false if the host cannot.
bool ReadCalendarField(REALobject date, const CalendarProperty& property, CalendarFields* fields);

// Converts the result of the platform's calendar functions.
CalendarFields CalendarFieldsOf(const std::tm& calendar);

// Create a date from a moment in local time. The caller owns it. Nil if the host cannot create it. The host normalizes
// fields out of range.
REALdate NewDate(const CalendarFields& fields);
REALdateTime NewDateTime(const CalendarFields& fields);

}  // namespace zkt
