// Which delimiter a text uses.
#pragma once

#include "csv/padded_text.h"

namespace zkt::csv {

// The commonest of comma, semicolon and tab outside double quotes, over the whole text. A tab has to outnumber both
// others, a comma has to outnumber the semicolon; every tie, and a text with none of them, gives the semicolon.
char DetectDelimiter(const PaddedText& text);

}  // namespace zkt::csv
