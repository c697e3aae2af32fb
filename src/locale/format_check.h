// Whether a printf format may be run with one double. Formats come from users: any other conversion would read what was
// never passed.
#pragma once

namespace zkt {

// True for a format with exactly one conversion, of a double: a A e E f F g G after flags, a width and a precision in
// digits, and an l (which means nothing here). "%%" may stand anywhere. Null and empty formats are refused.
bool TakesOneDouble(const char* format);

}  // namespace zkt
