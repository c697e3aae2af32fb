// The calling thread's quality-of-service class, which states how urgent the thread's work is.
#pragma once

namespace zkt {

// The values are those of the quality-of-service classes on macOS.
enum ThreadClass : unsigned {
  kThreadUnspecified = 0,
  kThreadBackground = 9,
  kThreadUtility = 17,
  kThreadDefault = 21,
  kThreadUserInitiated = 25,
  kThreadUserInteractive = 33,
};

// Gets the calling thread's class and its priority relative to other threads in that class. If the system cannot report
// them, returns false, sets errno and leaves both parameters unchanged.
bool GetThreadClass(unsigned& threadClass, int& relativePriority);

// Sets the calling thread's class, with relative priority 0. If the system refuses, returns false, sets errno and
// leaves the thread unchanged.
bool SetThreadClass(ThreadClass threadClass);

}  // namespace zkt
