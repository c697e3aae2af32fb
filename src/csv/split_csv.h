// The SplitCommaSeparatedValuesZKT method.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Splits delimited text into fields. Returns the fields of all lines in one array. Only the first UTF-8 bytes of
// `delimiter` and `quote` are used. If `delimiter` is empty, a comma, semicolon or tab is detected. If `quote` is
// empty, the double quote is used. All strings are borrowed and may be nil. Any text is valid, because every case of
// malformed quoting has a defined result. The caller owns the array. Returns nil if the host cannot create an array.
// Raises "OutOfMemoryException" or "RuntimeException" and returns nil if the text cannot be copied.
_REALarrayString* SplitCSV(REALstring text, REALstring delimiter, REALstring quote);

}  // namespace zkt
