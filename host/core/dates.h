// The host's classes Date and DateTime: six calendar fields and one count of seconds, always in step. A Date counts the
// seconds of the local calendar since 1904 and can be changed; a DateTime counts those since 1970 in UTC, shows them in
// the time zone of the process, and stays as it is.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/objects.h"

namespace host {

std::vector<ObjectClass*> DateClasses();

// Whether a class is one of the two, or derives from one.
bool IsDate(const ObjectClass* type);

// Year, month, day, hour, minute, second. What is out of range carries over: month 13 is January. False, and no change,
// for a moment that the platform's calendar cannot tell.
bool SetCalendarFields(REALobjectStruct* date, const std::array<std::int64_t, 6>& fields);

// The seconds by which dates of one class are ordered.
double SecondsOf(REALobjectStruct* date);

// "2024-01-31 00:00:00"
std::string DateText(REALobjectStruct* date);

}  // namespace host
