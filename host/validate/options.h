// What people can choose about a validation.
#pragma once

#include <cstdint>
#include <string>

namespace host::validate {

struct Options {
  std::string library;  // absolute and without links
  int level = 2;        // 1 to 3; each makes ten times as many calls as the one before
  std::uint64_t seed = 1;
  int secondsLimit = 20;   // without progress in a child
  std::int64_t calls = 0;  // of the storm, instead of what the level says
  std::string only;        // one call again: "storm:1234"
};

}  // namespace host::validate
