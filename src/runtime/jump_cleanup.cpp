#include "runtime/jump_cleanup.h"

#include "platform/thread_slot.h"

namespace zkt {

namespace {

// Returns the slot that holds each thread's newest entry.
const ThreadSlot& Slot() {
  static const ThreadSlot slot;
  return slot;
}

}  // namespace

JumpCleanup* JumpCleanup::Newest() { return static_cast<JumpCleanup*>(Slot().Get()); }

void JumpCleanup::Enter() {
  older_ = Newest();
  Slot().Set(this);
}

void JumpCleanup::Leave() {
  if (Newest() == this) {
    Slot().Set(older_);
    return;
  }
  for (JumpCleanup* newer = Newest(); newer != nullptr; newer = newer->older_)
    if (newer->older_ == this) newer->older_ = older_;
}

void JumpCleanup::RunNewerThan(const JumpCleanup* mark) {
  for (JumpCleanup* entry; (entry = Newest()) != mark && entry != nullptr;) {
    entry->Leave();
    entry->action_(entry);
  }
}

}  // namespace zkt
