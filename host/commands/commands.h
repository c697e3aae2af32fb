// The commands of xojo-host. Each gives the exit status of the program.
#pragma once

#include <string>

namespace host {

struct SplitOptions {
  std::string file;
  std::string delimiter;
  std::string quote;
  std::size_t records = 5;
  bool showFields = false;
};

int RunSplit(const std::string& plugin, const SplitOptions& options);

}  // namespace host
