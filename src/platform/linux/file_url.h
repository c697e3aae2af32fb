// Extracts the path of a URL, for URL objects on Linux.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zkt {

// Returns the path of a UTF-8 URL, without the scheme, host, query and fragment, and with percent escapes decoded.
// Returns nullopt if the URL contains a character that must be escaped, or a percent sign that is not followed by two
// hexadecimal digits.
std::optional<std::string> PathOfURL(std::string_view url);

}  // namespace zkt
