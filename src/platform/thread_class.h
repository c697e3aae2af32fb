// The urgency of the calling thread.
#pragma once

namespace zkt {

// The values are those of macOS's quality-of-service classes.
enum ThreadClass : unsigned {
  kThreadUnspecified = 0,
  kThreadBackground = 9,
  kThreadUtility = 17,
  kThreadDefault = 21,
  kThreadUserInitiated = 25,
  kThreadUserInteractive = 33,
};

// Gets the class of the calling thread and its priority relative to others of that class. Returns false and sets only
// errno if the system cannot report it.
bool GetThreadClass(unsigned& threadClass, int& relativePriority);

// Sets the class of the calling thread, at relative priority 0. Returns false and sets errno if the system refuses; the
// thread does not change.
bool SetThreadClass(ThreadClass threadClass);

}  // namespace zkt
