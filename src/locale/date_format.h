// Dates as text and back, by the formats of strftime and strptime (POSIX), in the language of the locale in force or of
// a named one. A named locale is switched on for the time category of the whole process and stays so after the call,
// while the numeric category is set to "C": callers rely on both.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The date in the format; the moment is normalised in local time, so that weekday, day of year and zone are known.
// Nil when the text is empty or longer than 127 bytes, or the date cannot be read. The caller owns the result.
// Raises "NilObjectException" for a nil date and "UnsupportedFormatException" for an unknown locale.
REALstring formatDateZKT(REALstring format, REALdate date, REALstring locale);
REALstring formatDateTimeZKT(REALstring format, REALdateTime date, REALstring locale);

// Reads a date. The variable's former date is released; it receives a new one, owned by it, even if the text does not
// match, of what had been read until then. True when the text matches the format.
// Raises "UnsupportedFormatException" for an unknown locale; the variable is then nil.
REALboolean parseDateZKT(REALstring format, REALstring text, REALdate* date, REALstring locale);
REALboolean parseDateTimeZKT(REALstring format, REALstring text, REALdateTime* date, REALstring locale);

}  // namespace zkt
