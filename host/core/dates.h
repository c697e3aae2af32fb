// The host's Date and DateTime classes. Both store six calendar fields and a count of seconds, and keep them
// consistent. A Date counts local seconds since 1904 and is mutable. A DateTime counts seconds since 1970 in UTC, has
// calendar fields in the process's time zone, and is immutable.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/objects.h"

namespace host {

// Whether a class is Date or DateTime, or derives from one of them.
bool IsDate(const ObjectClass* type);

// Sets the six calendar fields, from year to second. Out-of-range values carry over: month 13 is January of the next
// year. Returns false and changes nothing if the platform's calendar cannot represent the time.
bool SetCalendarFields(REALobjectStruct* date, const std::array<std::int64_t, 6>& fields);

// Returns the date's count of seconds. This count orders dates of the same class.
double SecondsOf(REALobjectStruct* date);

// Returns the date and time as text, such as "2024-01-31 00:00:00".
std::string DateText(REALobjectStruct* date);

}  // namespace host
