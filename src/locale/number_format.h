// Formats and parses numbers by the rules of the current locale or of a named locale. A named locale applies to the
// whole process during the call. Afterwards, the switched categories are set to "C", regardless of their former values.
// The function names are fixed by the host's interface.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Formats the value with a printf format that takes one double. Truncates the result to 98 bytes. The result is always
// marked as ASCII, even if the locale adds other characters. Raises "UnsupportedFormatException" and returns nil for
// any other format or an unknown locale. The caller owns the result.
REALstring formatZKT(REALstring format, double value, REALstring locale);

// Parses a number from the first 99 bytes of the text, ignoring group separators. Returns false if other characters
// follow the number, or if the number is too large or too small for a double. In all of these cases, `value` is the
// result of strtod. Also returns false if the text is nil. Raises "UnsupportedFormatException" for an unknown locale.
REALboolean cdblZKT(REALstring text, double* value, REALstring locale);

using NumberBuffer = char[100];

// Returns the first 99 bytes of the text without the current locale's group separators. The result is in the caller's
// buffer, so threads do not interfere. If `text` is null, returns an empty string outside the buffer.
const char* FixBuf(const char* text, NumberBuffer& buffer);

}  // namespace zkt
