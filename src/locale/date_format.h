// Formats and parses dates with strftime and strptime formats (POSIX), in the language of the current locale or of a
// named locale. A named locale becomes the process's LC_TIME locale and remains so after the call, and LC_NUMERIC is
// set to "C". Callers rely on both effects. The function names are fixed by the host's interface.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Formats the date. The date is normalized in local time to determine the weekday, day of year and time zone. Returns
// nil if the result is empty or longer than 127 bytes, or if the date cannot be read. The caller owns the result.
// Raises "NilObjectException" for a nil date and "UnsupportedFormatException" for an unknown locale.
REALstring formatDateZKT(REALstring format, REALdate date, REALstring locale);
REALstring formatDateTimeZKT(REALstring format, REALdateTime date, REALstring locale);

// Parses a date. Releases the variable's previous date and stores a new date, which the variable owns. If the text does
// not match the format, the new date has the fields that were parsed before the mismatch. Returns whether the text
// matches. For an unknown locale, raises "UnsupportedFormatException" and sets the variable to nil.
REALboolean parseDateZKT(REALstring format, REALstring text, REALdate* date, REALstring locale);
REALboolean parseDateTimeZKT(REALstring format, REALstring text, REALdateTime* date, REALstring locale);

}  // namespace zkt
