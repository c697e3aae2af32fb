// Provides the development host to targets that call native functions.
#pragma once

#include <clocale>
#include <iterator>
#include <string>

#include "core/exceptions.h"
#include "core/host.h"
#include "core/ref_counted.h"
#include "core/strings.h"
#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "services/services.h"
#include "target.h"

namespace fuzz {

// Sets up the host once per process, with the locales that the build creates.
inline void NeedHost() {
  static const bool isReady = [] {
    ::setenv("LOCPATH", ZKT_LOCALES, 1);
    zkt::gResolver = &host::Resolve;
    zkt::rbversion = host::Host::Current().version = 2024.03;
    return true;
  }();
  Require(isReady, "the host is ready");
}

// Removes the first byte of an input and returns the locale that this byte selects. '0' selects the first locale.
inline const char* TakeLocale(std::string_view& input) {
  static constexpr const char* kLocales[] = {"C",           "de_DE.UTF-8", "fr_FR.UTF-8", "de_CH.UTF-8",
                                             "en_IN.UTF-8", "ja_JP.UTF-8", "ps_AF.UTF-8", "de_DE.ISO-8859-1"};
  const char* const locale = kLocales[static_cast<unsigned char>(TakeByte(input) - '0') % std::size(kLocales)];
  Require(std::setlocale(LC_ALL, locale) != nullptr, "the locale that the build creates is available");
  std::setlocale(LC_ALL, "C");
  return locale;
}

// Returns the text before its first zero byte, which is all that a C function reads.
inline std::string UpToZero(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }

inline void RequireBalance() { Require(host::ReportReferences().IsBalanced(), "all references are released"); }

}  // namespace fuzz
