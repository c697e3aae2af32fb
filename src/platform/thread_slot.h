// A word for each thread that needs no heap memory.
#pragma once

#include <pthread.h>

namespace zkt {

// A thread_local variable of a dynamically loaded library is allocated at a thread's first use, and the C library ends
// the process if that fails. The first POSIX keys are stored in the thread itself.
class ThreadSlot {
 public:
  // `destroy` is called at the end of a thread with its word, unless the word is null.
  explicit ThreadSlot(void (*destroy)(void*) = nullptr) : isMade_(::pthread_key_create(&key_, destroy) == 0) {}
  ThreadSlot(const ThreadSlot&) = delete;
  ThreadSlot& operator=(const ThreadSlot&) = delete;

  // Null initially, and if the process has no keys left.
  void* Get() const { return isMade_ ? ::pthread_getspecific(key_) : nullptr; }

  // Returns false if the word was not stored.
  bool Set(void* word) const { return isMade_ && ::pthread_setspecific(key_, word) == 0; }

 private:
  pthread_key_t key_{};
  bool isMade_;
};

}  // namespace zkt
