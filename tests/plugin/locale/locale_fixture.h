// For tests in real locales, which the build creates (ZKT_LOCALES). A missing locale is a failure. Provides the names
// of the process-wide locales, so that tests can check changes to them.
#pragma once

#include <clocale>
#include <cstdlib>
#include <memory>
#include <string>

#include "frame/catalogue/tables.h"
#include "locale/locale_class.h"
#include "support/host_fixture.h"

namespace tests {

inline host::StringRef OptionalString(const char* text) {
  return text != nullptr ? MakeString(text) : host::StringRef();
}

class Locales : public HostTest {
 protected:
  Locales() {
    ::setenv("LOCPATH", ZKT_LOCALES, 1);
    std::setlocale(LC_ALL, "C");
    host_.objectClasses.push_back(host::MakeClass(zkt::LocaleClass(), 5));
  }
  ~Locales() override {
    std::setlocale(LC_ALL, "C");
    host_.objectClasses.clear();
  }

  // Returns the names of the current numeric, monetary, and time locales.
  static std::string Categories() {
    std::string names;
    for (const int category : {LC_NUMERIC, LC_MONETARY, LC_TIME})
      names += std::string(std::setlocale(category, nullptr)) + " ";
    return names;
  }

  static std::string MessageRaised() {
    const auto raised = TakeRaised();
    return raised ? raised->className + ": " + raised->message : "";
  }

  // Returns the text of an owned string and releases it. Returns "nil" for nil.
  static std::string TakeText(REALstring owned) {
    const host::StringRef text(owned);
    return text ? std::string(text->View()) : "nil";
  }

  host::Host& host_ = host::Host::Current();
};

}  // namespace tests
