// The module "UtilGlobalsZKT", built at start-up: hosts from 2013 up to 3000 take global methods as members of a
// module.
#pragma once

#include <cstdint>
#include <span>

#include "frame/plugin_interface.h"

namespace zkt {

// The flag of every method of the module: its scope is global.
inline constexpr std::uint32_t kGlobalScope = 0x10;

class GlobalsModule {
 public:
  // Makes room for more methods and gives their first row; the rows are zeroed. Null when memory is out, which is
  // logged; what was there before stays.
  REALmethodDefinition* Grow(std::uint64_t count);

  // Appends the methods, each with global scope.
  void Append(std::span<const REALmethodDefinition> methods);

  // The record for the host, or null while there is none. It is never freed.
  REALmoduleDefinition* Record() const { return record_; }

 private:
  bool Create();

  REALmoduleDefinition* record_ = nullptr;
};

}  // namespace zkt
