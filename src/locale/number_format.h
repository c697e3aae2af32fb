// Numbers as text and back, by the rules of the locale in force or of a named one. A named locale is switched on for
// the whole process during the call; afterwards the categories that were switched are at "C", whatever they were
// before.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The value in a printf format that takes one double. Text beyond 98 bytes is cut, and the result is declared ASCII
// whatever the locale has put in. Raises "UnsupportedFormatException" for another format and for an unknown locale, and
// answers nil. The caller owns the result.
REALstring formatZKT(REALstring format, double value, REALstring locale);

// Reads a number, of which the first 99 bytes count, without the separators of its groups. False when there is more
// than the number, or a number too large or too small for a double; the value is then what could be read. Nil text is
// no number. Raises "UnsupportedFormatException" for an unknown locale.
REALboolean cdblZKT(REALstring text, double* value, REALstring locale);

using NumberBuffer = char[100];

// The first 99 bytes of the text without the separators of the locale in force. The result lies in the caller's buffer,
// so that threads do not interfere with each other; null gives an empty text outside it.
const char* FixBuf(const char* text, NumberBuffer& buffer);

}  // namespace zkt
