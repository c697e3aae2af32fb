#include "platform/linux/file_url.h"

namespace zkt {

namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kDigits = "0123456789";
// The characters, other than letters and digits, that a URL may contain unescaped (RFC 3986, sections 2.2 and 2.3).
constexpr std::string_view kSigns = "-._~:/?#[]@!$&'()*+,;=";

bool IsOneOf(char c, std::string_view set) { return set.find(c) != std::string_view::npos; }

bool IsURLText(std::string_view text) {
  for (const char c : text)
    if (!IsOneOf(c, kLetters) && !IsOneOf(c, kDigits) && !IsOneOf(c, kSigns) && c != '%') return false;
  return true;
}

// Returns the value of a hexadecimal digit, or -1 for any other character.
int ValueOf(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  return -1;
}

std::optional<std::string> DecodeEscapes(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    if (text.size() - i < 3) return std::nullopt;
    const int high = ValueOf(text[++i]);
    const int low = ValueOf(text[++i]);
    if (high < 0 || low < 0) return std::nullopt;
    decoded += static_cast<char>(high << 4 | low);
  }
  return decoded;
}

// Removes "scheme:", if present.
std::string_view WithoutScheme(std::string_view url) {
  const std::size_t colon = url.find_first_of(":/?#");
  const bool hasScheme =
      colon != std::string_view::npos && colon > 0 && url[colon] == ':' && IsOneOf(url.front(), kLetters);
  return hasScheme ? url.substr(colon + 1) : url;
}

}  // namespace

std::optional<std::string> PathOfURL(std::string_view url) {
  if (!IsURLText(url)) return std::nullopt;
  url = WithoutScheme(url);
  url = url.substr(0, url.find_first_of("?#"));
  if (url.starts_with("//")) {
    const std::size_t path = url.find('/', 2);
    url = path != std::string_view::npos ? url.substr(path) : std::string_view();
  }
  return DecodeEscapes(url);
}

}  // namespace zkt
