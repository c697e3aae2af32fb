// The path of a URL, for URL objects on Linux.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zkt {

// Returns the path of a URL in UTF-8 with decoded percent escapes, without scheme, host, query and fragment. Empty for
// an invalid URL: one with a character that must be escaped, or a percent sign without two hexadecimal digits.
std::optional<std::string> PathOfURL(std::string_view url);

}  // namespace zkt
