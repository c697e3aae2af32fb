// Formats and parses numbers by the rules of the current locale or of a named one. A named locale applies to the whole
// process during the call. Afterwards, the switched categories are set to "C", regardless of their former values. The
// names of the functions are fixed by the host's interface.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Formats the value with a printf format that takes one double. Truncates the text after 98 bytes. The result is always
// marked as ASCII, even if the locale adds other characters. Raises "UnsupportedFormatException" and returns nil for
// any other format or an unknown locale. The caller owns the result.
REALstring formatZKT(REALstring format, double value, REALstring locale);

// Parses a number from the first 99 bytes, ignoring group separators. Returns false if other text follows, or if the
// number is too large or too small for a double; the value is then the part that was parsed. Nil text is not a number.
// Raises "UnsupportedFormatException" for an unknown locale.
REALboolean cdblZKT(REALstring text, double* value, REALstring locale);

using NumberBuffer = char[100];

// Returns the first 99 bytes of the text without the group separators of the current locale. The result is in the
// caller's buffer, so threads do not interfere. For null, it is an empty text outside the buffer.
const char* FixBuf(const char* text, NumberBuffer& buffer);

}  // namespace zkt
