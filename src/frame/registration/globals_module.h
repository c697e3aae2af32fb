// The module "UtilGlobalsZKT", built at start-up: hosts from 2013 up to 3000 take global methods as members of a
// module.
#pragma once

#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

class GlobalsModule {
 public:
  // Appends the methods with global scope. If memory runs out, omits them and logs it.
  void Append(std::span<const REALmethodDefinition> methods);

  // Appends the methods of a class extension, converted to extension methods with global scope.
  void AppendExtension(const REALclassDefinition& extension);

  // Returns the record for the host, or null while the module is empty. The record is never freed.
  REALmoduleDefinition* Record() const { return record_; }

 private:
  REALmethodDefinition* Grow(std::uint64_t count);
  bool Create();

  REALmoduleDefinition* record_ = nullptr;
};

}  // namespace zkt
