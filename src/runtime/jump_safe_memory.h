// Memory that is freed even where the scope that owns it is left by a jump, which skips destructors: a crash handler
// jumps out of the frames of a delegate, and of what the delegate has called.
#pragma once

#include <cstddef>

namespace zkt {

class JumpSafeMemory {
 public:
  // A block of the calling thread, in use until it is freed.
  struct Block {
    Block* older;
  };

  // Allocates so many bytes, aligned for every element type.
  explicit JumpSafeMemory(std::size_t bytes);
  JumpSafeMemory(const JumpSafeMemory&) = delete;
  JumpSafeMemory& operator=(const JumpSafeMemory&) = delete;
  ~JumpSafeMemory();

  // Null when memory is out.
  void* Get() const;

  // The calling thread's newest block, or null: to be asked for before calling what may be left by a jump.
  static Block* Newest();

  // Frees the calling thread's blocks that are newer, after a jump out of the frames that own them.
  static void FreeNewerThan(const Block* block);

 private:
  Block* block_;
};

}  // namespace zkt
