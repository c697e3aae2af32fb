// The sink that converts fields to host strings.
#pragma once

#include <string_view>

#include "frame/contract/host_reference.h"
#include "runtime/debug_log.h"
#include "runtime/log_text.h"
#include "runtime/text_builder.h"

namespace zkt::csv {

// Appends each field to a borrowed host array, which then holds the only reference to the new string. An empty field
// becomes nil, the host's empty string.
class ArrayOfFields {
 public:
  explicit ArrayOfFields(_REALarrayString* array) : array_(array) {}

  void operator()(std::string_view field) const {
    const OwnedString string(REALBuildUnicodeString(field.data(), static_cast<long long>(field.size()), kEncodingUTF8));
    REALInsertArrayValueString(array_, REALGetArrayUBound(array_) + 1, string.Get());
    if (IsDebugging()) [[unlikely]]
      Trace("add", static_cast<const void*>(string.Get()), LogText(field).Get());
  }

 private:
  _REALarrayString* array_;
};

}  // namespace zkt::csv
