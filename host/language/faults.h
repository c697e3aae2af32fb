// Functions that really fault, each in its own way, for delegates that crash.
#pragma once

#include <span>
#include <string_view>

namespace host {

struct Fault {
  std::string_view name;
  void (*commit)();
  int signal;  // what the system sends; 0 for a C++ exception
};

// Where a processor does not fault by itself, or there is no real cause without privileges, the signal is raised.
std::span<const Fault> Faults();

}  // namespace host
