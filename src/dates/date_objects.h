// Host dates, by the names of their properties and the declarations of their constructors.
#pragma once

#include <ctime>

#include "dates/calendar_fields.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The second count of a Date, its value for ordering and differences; 0.0 when the host cannot tell.
double GetTotalSeconds(REALdate date);

// The second count of a DateTime; 0.0 when the host cannot tell, nil included.
double GetDateTimeSecondsFrom1970(REALdateTime dateTime);

// One calendar field of a Date or DateTime: its name as a property of the host, and its place here.
struct CalendarProperty {
  const char* name;
  std::int64_t CalendarFields::*field;
};

// From the year down to the second.
inline constexpr CalendarProperty kCalendarProperties[] = {
    {"Year", &CalendarFields::year}, {"Month", &CalendarFields::month},   {"Day", &CalendarFields::day},
    {"Hour", &CalendarFields::hour}, {"Minute", &CalendarFields::minute}, {"Second", &CalendarFields::second}};

// Reads one field of a Date or DateTime. False when the host cannot.
bool ReadCalendarField(REALobject date, const CalendarProperty& property, CalendarFields* fields);

// The fields that the platform's calendar functions have filled in.
CalendarFields CalendarFieldsOf(const std::tm& calendar);

// Make a new date of a moment in local time, which the caller owns; nil when the host cannot. Fields out of range are
// for the host to normalise.
REALdate NewDate(const CalendarFields& fields);
REALdateTime NewDateTime(const CalendarFields& fields);

}  // namespace zkt
