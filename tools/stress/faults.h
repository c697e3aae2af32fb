// Functions that crash in different ways. Delegates call them to test crash handling.
#pragma once

#include <span>
#include <string_view>

namespace stress {

struct Fault {
  std::string_view name;
  void (*commit)();
  int signal;  // the signal that the system sends; 0 for a C++ exception
};

// A function raises its signal itself if the processor does not detect the fault, or if only privileged code can cause
// it.
std::span<const Fault> Faults();

}  // namespace stress
