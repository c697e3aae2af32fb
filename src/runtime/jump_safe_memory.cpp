#include "runtime/jump_safe_memory.h"

#include <cstdint>
#include <new>

namespace zkt {

namespace {

constexpr std::size_t kAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t kHeaderSize = (sizeof(JumpCleanup) + kAlignment - 1) / kAlignment * kAlignment;

void Free(JumpCleanup* block) { ::operator delete(block); }

}  // namespace

JumpSafeMemory::JumpSafeMemory(std::size_t bytes) : block_(nullptr) {
  if (bytes > SIZE_MAX - kHeaderSize) return;
  void* const memory = ::operator new(kHeaderSize + bytes, std::nothrow);
  if (memory == nullptr) return;
  block_ = new (memory) JumpCleanup(&Free);
  block_->Enter();
}

JumpSafeMemory::~JumpSafeMemory() {
  if (block_ == nullptr) return;
  block_->Leave();
  Free(block_);
}

void* JumpSafeMemory::Get() const {
  return block_ != nullptr ? reinterpret_cast<std::byte*>(block_) + kHeaderSize : nullptr;
}

}  // namespace zkt
