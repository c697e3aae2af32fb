// Classifies UTF-8 characters independently of the process locale, which scripts and plug-ins may change.
#pragma once

#include <locale.h>
#include <wchar.h>

#include <string_view>

namespace host {

// Sets the calling thread's locale to C.UTF-8 until the end of the scope.
class Utf8Locale {
 public:
  Utf8Locale() : former_(uselocale(Utf8())) {}
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;
  ~Utf8Locale() { uselocale(former_); }

  // Reads the first character of a nonempty string and returns its length in bytes; 0 if the first byte does not start
  // a character.
  static std::size_t Read(std::string_view text, wchar_t& character) {
    mbstate_t state = {};
    const std::size_t length = mbrtowc(&character, text.data(), text.size(), &state);
    return length == 0 ? 1 : length <= text.size() ? length : 0;
  }

 private:
  static locale_t Utf8() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
  }

  locale_t former_;
};

}  // namespace host
