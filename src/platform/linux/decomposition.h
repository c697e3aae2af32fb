// Unicode's canonical decomposition (form D) for strings on Linux.
#pragma once

#include <string>
#include <string_view>

namespace zkt {

// Returns the text with every character decomposed and the marks after it in canonical order. Unpaired surrogates are
// kept.
std::u16string DecomposeCanonically(std::u16string_view text);

}  // namespace zkt
