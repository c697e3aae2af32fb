// The "UtilGlobalsZKT" module, which is built at start-up. On hosts whose version is at least 2013 and below 3000, it
// contains the global methods and the converted extension methods.
#pragma once

#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

class GlobalsModule {
 public:
  // Appends the methods and gives them global scope. If memory runs out, logs the failure and omits the methods.
  void Append(std::span<const REALmethodDefinition> methods);

  // Appends the methods of a class extension, converted to extension methods with global scope.
  void AppendExtension(const REALclassDefinition& extension);

  // Returns the record for the host, or null if nothing has been appended yet. The record is never freed.
  REALmoduleDefinition* Record() const { return record_; }

 private:
  REALmethodDefinition* Grow(std::uint64_t count);
  bool Create();

  REALmoduleDefinition* record_ = nullptr;
};

}  // namespace zkt
