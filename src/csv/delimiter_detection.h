// Detects the delimiter of a text.
#pragma once

#include "csv/padded_text.h"

namespace zkt::csv {

// Returns the most frequent of comma, semicolon and tab outside double quotes, in the whole text. A tab must outnumber
// both others, and a comma must outnumber the semicolon. Every other case is the semicolon.
char DetectDelimiter(const PaddedText& text);

}  // namespace zkt::csv
