#include "process/alternate_stack.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>

#include "platform/thread_slot.h"

namespace zkt {

namespace {

// Large enough for a backtrace and its log lines, even with the largest register sets.
constexpr std::size_t kStackSize = std::size_t{256} * 1024;

// An inaccessible guard page precedes the stack, so a handler that overflows the stack faults there.
std::size_t GuardSize() { return static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)); }

// Returns null if memory runs out.
void* Map() {
  void* const mapped = ::mmap(nullptr, GuardSize() + kStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANON, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  ::mprotect(mapped, GuardSize(), PROT_NONE);
  return mapped;
}

void Unmap(void* mapped) { ::munmap(mapped, GuardSize() + kStackSize); }

// Returns the calling thread's alternate stack, which is allocated on first use, or null if memory runs out.
void* StackOfThread() {
  static const ThreadSlot slot(&Unmap);
  void* mapped = slot.Get();
  if (mapped == nullptr) {
    mapped = Map();
    if (mapped == nullptr) return nullptr;
    if (!slot.Set(mapped)) {
      Unmap(mapped);
      return nullptr;
    }
  }
  return static_cast<std::byte*>(mapped) + GuardSize();
}

}  // namespace

AlternateStack::AlternateStack() {
  stack_t ours{};
  ours.ss_sp = StackOfThread();
  ours.ss_size = kStackSize;
  if (ours.ss_sp != nullptr) isInstalled_ = ::sigaltstack(&ours, &hosts_) == 0;
}

AlternateStack::~AlternateStack() {
  if (isInstalled_) ::sigaltstack(&hosts_, nullptr);
}

}  // namespace zkt
