// The seven signals that a crash comes as, and what is in force for them around a call.
#pragma once

#include <csignal>
#include <cstddef>

namespace zkt {

// Our handlers and what was there before.
class CrashSignals {
 public:
  using Handler = void (*)(int signal);

  // In the order of installation.
  enum Index : std::size_t { kILL, kFPE, kSEGV, kTRAP, kBUS, kSYS, kPIPE, kCount };

  // Puts a handler in place for each signal, by index. They run on the alternate stack, and a fault inside one of them
  // reaches its handler again.
  void Install(const Handler (&handlers)[kCount]);

  // Puts back what was there before, and logs where somebody else has changed a handler meanwhile.
  void Restore(const Handler (&handlers)[kCount]) const;

  // Leaves the default action for all of them.
  static void SetToDefault();

 private:
  struct sigaction former_[kCount];
};

// What to tell about a crash by that signal.
const char* MessageOfCrash(int signal);

}  // namespace zkt
