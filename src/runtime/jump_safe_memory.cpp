#include "runtime/jump_safe_memory.h"

#include <cstdint>
#include <new>

#include "platform/thread_slot.h"

namespace zkt {

namespace {

constexpr std::size_t kHeaderSize = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
static_assert(sizeof(JumpSafeMemory::Block) <= kHeaderSize);

// The newest block of each thread. Where the process has no key left, blocks are not listed, and a jump leaks them.
const ThreadSlot& NewestOfThread() {
  static const ThreadSlot slot;
  return slot;
}

JumpSafeMemory::Block* Allocate(std::size_t bytes) {
  if (bytes > SIZE_MAX - kHeaderSize) return nullptr;
  return static_cast<JumpSafeMemory::Block*>(::operator new(kHeaderSize + bytes, std::nothrow));
}

}  // namespace

JumpSafeMemory::JumpSafeMemory(std::size_t bytes) : block_(Allocate(bytes)) {
  if (block_ == nullptr) return;
  block_->older = Newest();
  NewestOfThread().Set(block_);
}

// Another block can be the newest where a host runs several of its threads in turns on one of the system's.
JumpSafeMemory::~JumpSafeMemory() {
  if (block_ == nullptr) return;
  if (Newest() == block_) {
    NewestOfThread().Set(block_->older);
  } else {
    for (Block* newer = Newest(); newer != nullptr; newer = newer->older)
      if (newer->older == block_) newer->older = block_->older;
  }
  ::operator delete(block_);
}

void* JumpSafeMemory::Get() const {
  return block_ != nullptr ? reinterpret_cast<std::byte*>(block_) + kHeaderSize : nullptr;
}

JumpSafeMemory::Block* JumpSafeMemory::Newest() { return static_cast<Block*>(NewestOfThread().Get()); }

void JumpSafeMemory::FreeNewerThan(const Block* block) {
  for (Block* newest = Newest(); newest != nullptr && newest != block; newest = Newest()) {
    NewestOfThread().Set(newest->older);
    ::operator delete(newest);
  }
}

}  // namespace zkt
