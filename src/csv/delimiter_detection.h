// Detects the delimiter of delimited text.
#pragma once

#include "csv/padded_text.h"

namespace zkt::csv {

// Counts commas, semicolons and tabs outside double quotes in the whole text. Returns the tab if there are more tabs
// than commas and more tabs than semicolons. Otherwise, returns the comma if commas outnumber semicolons, and the
// semicolon if they do not.
char DetectDelimiter(const PaddedText& text);

}  // namespace zkt::csv
