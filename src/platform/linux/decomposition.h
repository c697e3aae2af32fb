// Unicode's canonical decomposition (form D), for the string objects of Linux.
#pragma once

#include <string>
#include <string_view>

namespace zkt {

// UTF-16 text with every character taken apart and the marks behind it in canonical order. Surrogates that stand alone
// stay where they are.
std::u16string DecomposeCanonically(std::u16string_view text);

}  // namespace zkt
