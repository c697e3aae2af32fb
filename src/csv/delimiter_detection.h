// Detects the delimiter of delimited text.
#pragma once

#include "csv/padded_text.h"

namespace zkt::csv {

// Counts commas, semicolons and tabs outside double quotes in the whole text. Returns the tab if tabs outnumber both
// others. Otherwise returns the comma if commas outnumber semicolons, else the semicolon.
char DetectDelimiter(const PaddedText& text);

}  // namespace zkt::csv
