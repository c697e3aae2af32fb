// The host's classes Date and DateTime: six calendar fields and a count of seconds, always in sync. A Date counts local
// seconds since 1904 and is mutable. A DateTime counts seconds since 1970 in UTC, shows them in the time zone of the
// process, and is immutable.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/objects.h"

namespace host {

std::vector<ObjectClass*> DateClasses();

// Whether a class is Date or DateTime, or derives from one of them.
bool IsDate(const ObjectClass* type);

// Sets year, month, day, hour, minute and second. Values out of range carry over: month 13 is January. Returns false
// and changes nothing if the platform's calendar cannot represent the moment.
bool SetCalendarFields(REALobjectStruct* date, const std::array<std::int64_t, 6>& fields);

// The count of seconds, by which dates of one class are ordered.
double SecondsOf(REALobjectStruct* date);

// "2024-01-31 00:00:00"
std::string DateText(REALobjectStruct* date);

}  // namespace host
