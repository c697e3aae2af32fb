// Memory that is freed even if a jump out of a crashed delegate skips the destructor.
#pragma once

#include <cstddef>

#include "runtime/jump_cleanup.h"

namespace zkt {

class JumpSafeMemory {
 public:
  // Allocates `bytes` bytes, aligned for every element type.
  explicit JumpSafeMemory(std::size_t bytes);
  JumpSafeMemory(const JumpSafeMemory&) = delete;
  JumpSafeMemory& operator=(const JumpSafeMemory&) = delete;
  ~JumpSafeMemory();

  // Returns null if the allocation failed.
  void* Get() const;

 private:
  JumpCleanup* block_;  // the block begins with its entry in the thread's list
};

}  // namespace zkt
