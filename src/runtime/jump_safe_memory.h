// Memory that is freed even where the scope that owns it is left by a jump out of a crashed delegate.
#pragma once

#include <cstddef>

#include "runtime/jump_cleanup.h"

namespace zkt {

class JumpSafeMemory {
 public:
  // Allocates so many bytes, aligned for every element type.
  explicit JumpSafeMemory(std::size_t bytes);
  JumpSafeMemory(const JumpSafeMemory&) = delete;
  JumpSafeMemory& operator=(const JumpSafeMemory&) = delete;
  ~JumpSafeMemory();

  // Null when memory is out.
  void* Get() const;

 private:
  JumpCleanup* block_;  // begins with its entry in the list of the thread
};

}  // namespace zkt
