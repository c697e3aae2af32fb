// Unicode canonical decomposition (form D) for strings on Linux.
#pragma once

#include <string>
#include <string_view>

namespace zkt {

// Returns the text with every character decomposed and all combining marks in canonical order. Unpaired surrogates stay
// unchanged.
std::u16string DecomposeCanonically(std::u16string_view text);

}  // namespace zkt
