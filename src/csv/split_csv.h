// The method SplitCommaSeparatedValuesZKT.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Splits a text of comma, semicolon or tab separated values into its fields: one flat array over all lines.
// `delimiter` and `quote` count by the first byte of their UTF-8 form; an empty delimiter is detected, an empty quote
// is the double quote. All strings are borrowed and may be nil. No text is an error: malformed quoting has one fixed
// outcome each. The caller owns the array, which is nil only when the host cannot make one. Raises
// "OutOfMemoryException" or "RuntimeException" when the text cannot be copied; the result is nil then.
_REALarrayString* SplitCSV(REALstring text, REALstring delimiter, REALstring quote);

}  // namespace zkt
