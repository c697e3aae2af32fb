// Checks whether a printf format is safe to use with one double. Formats come from users, and a conversion for any
// other type would read an argument that was not passed.
#pragma once

namespace zkt {

// Returns whether a format has exactly one conversion and that conversion takes a double: one of a A e E f F g G,
// optionally preceded by flags, a width and a precision in digits, and an l, which has no effect. "%%" may occur
// anywhere. Returns false for a null or empty format.
bool HasSingleDoubleConversion(const char* format);

}  // namespace zkt
