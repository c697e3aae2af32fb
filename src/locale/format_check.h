// Checks whether a printf format is safe to use with one double. Formats come from users: any other conversion would
// read an argument that was not passed.
#pragma once

namespace zkt {

// Returns whether a format has exactly one conversion, for a double: a A e E f F g G after flags, a width and a
// precision in digits, and an l (which has no effect). "%%" may be anywhere. Returns false for null and empty formats.
bool HasSingleDoubleConversion(const char* format);

}  // namespace zkt
