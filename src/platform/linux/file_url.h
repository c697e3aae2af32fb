// The path in the text of a URL, for the URL objects of Linux.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zkt {

// The path of a URL in UTF-8, with its percent escapes decoded: without scheme, host, query and fragment. Nothing when
// the text is no URL: a character that has to be escaped, or a percent sign without two hexadecimal digits.
std::optional<std::string> PathOfURL(std::string_view url);

}  // namespace zkt
