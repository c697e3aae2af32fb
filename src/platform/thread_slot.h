// A word for each thread that takes no memory.
#pragma once

#include <pthread.h>

namespace zkt {

// A thread_local variable of a library that is loaded at run time gets its memory at a thread's first use, and the C
// library ends the process when there is none. The first keys of POSIX lie in the thread itself.
class ThreadSlot {
 public:
  // What is given is called at a thread's end with the word of the thread, unless that is null.
  explicit ThreadSlot(void (*destroy)(void*) = nullptr) : isMade_(::pthread_key_create(&key_, destroy) == 0) {}
  ThreadSlot(const ThreadSlot&) = delete;
  ThreadSlot& operator=(const ThreadSlot&) = delete;

  // Null at first, and when the process has no more keys.
  void* Get() const { return isMade_ ? ::pthread_getspecific(key_) : nullptr; }

  // False when the word is not kept.
  bool Set(void* word) const { return isMade_ && ::pthread_setspecific(key_, word) == 0; }

 private:
  pthread_key_t key_{};
  bool isMade_;
};

}  // namespace zkt
