// The method SplitCommaSeparatedValuesZKT.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Splits a text of comma, semicolon or tab separated values into fields: one flat array of all lines. Only the first
// UTF-8 byte of `delimiter` and `quote` is used. An empty delimiter is detected, and an empty quote is the double
// quote. All strings are borrowed and may be nil. Any text is valid: malformed quoting has one fixed outcome in each
// case. The caller owns the array, which is nil only if the host cannot create one. Raises "OutOfMemoryException" or
// "RuntimeException" and returns nil if the text cannot be copied.
_REALarrayString* SplitCSV(REALstring text, REALstring delimiter, REALstring quote);

}  // namespace zkt
