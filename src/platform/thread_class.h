// How urgently the system lets the calling thread work.
#pragma once

namespace zkt {

// The numbers are those of macOS's quality-of-service classes.
enum ThreadClass : unsigned {
  kThreadUnspecified = 0,
  kThreadBackground = 9,
  kThreadUtility = 17,
  kThreadDefault = 21,
  kThreadUserInitiated = 25,
  kThreadUserInteractive = 33,
};

// The class of the calling thread, and its priority relative to others of that class. False when the system does not
// tell; errno says why, and nothing is written.
bool GetThreadClass(unsigned& threadClass, int& relativePriority);

// Gives the calling thread a class, at relative priority 0. False when the system refuses; errno says why, and the
// thread is as it was.
bool SetThreadClass(ThreadClass threadClass);

}  // namespace zkt
