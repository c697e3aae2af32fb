#include "process/alternate_stack.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>

namespace zkt {

namespace {

// Enough for a backtrace and its log lines, with the registers of the largest processors.
constexpr std::size_t kStackSize = std::size_t{256} * 1024;

// Below the stack lies a page that cannot be touched, so that a handler that needs too much stops there.
class StackMapping {
 public:
  StackMapping() : guardSize_(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE))) {
    void* const mapped =
        ::mmap(nullptr, guardSize_ + kStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANON, -1, 0);
    if (mapped == MAP_FAILED) return;
    base_ = static_cast<std::byte*>(mapped);
    ::mprotect(base_, guardSize_, PROT_NONE);
  }
  StackMapping(const StackMapping&) = delete;
  StackMapping& operator=(const StackMapping&) = delete;
  ~StackMapping() {
    if (base_ != nullptr) ::munmap(base_, guardSize_ + kStackSize);
  }

  // Null when memory is out.
  void* Stack() const { return base_ != nullptr ? base_ + guardSize_ : nullptr; }

 private:
  std::size_t guardSize_;
  std::byte* base_ = nullptr;
};

}  // namespace

AlternateStack::AlternateStack() {
  static thread_local const StackMapping mapping;
  stack_t ours{};
  ours.ss_sp = mapping.Stack();
  ours.ss_size = kStackSize;
  if (ours.ss_sp != nullptr) isInstalled_ = ::sigaltstack(&ours, &hosts_) == 0;
}

AlternateStack::~AlternateStack() {
  if (isInstalled_) ::sigaltstack(&hosts_, nullptr);
}

}  // namespace zkt
