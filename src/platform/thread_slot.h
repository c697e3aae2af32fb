// A per-thread word that needs no heap memory.
#pragma once

#include <pthread.h>

namespace zkt {

// A thread_local variable in a dynamically loaded library is allocated when a thread first uses it, and the C library
// ends the process if the allocation fails. The values of the first POSIX keys are stored in the thread itself, so they
// need no allocation.
class ThreadSlot {
 public:
  // When a thread ends, `destroy` is called with the thread's word, unless the word is null.
  explicit ThreadSlot(void (*destroy)(void*) = nullptr) : isMade_(::pthread_key_create(&key_, destroy) == 0) {}
  ThreadSlot(const ThreadSlot&) = delete;
  ThreadSlot& operator=(const ThreadSlot&) = delete;

  // Returns the calling thread's word. The word is null until it is set, and stays null if the process has no keys
  // left.
  void* Get() const { return isMade_ ? ::pthread_getspecific(key_) : nullptr; }

  // Returns false if the word cannot be stored.
  bool Set(void* word) const { return isMade_ && ::pthread_setspecific(key_, word) == 0; }

 private:
  pthread_key_t key_{};
  bool isMade_;
};

}  // namespace zkt
