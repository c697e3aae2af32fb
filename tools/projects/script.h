// An example script, split into methods and statements, because a Xojo item has no code outside methods.
#pragma once

#include <string>
#include <vector>

namespace projects {

using Lines = std::vector<std::string>;

struct Script {
  std::string fileName;        // such as split_text.xojo
  std::string name;            // such as SplitText
  Lines statements;            // including comments outside methods
  std::vector<Lines> methods;  // each from its declaration to its end
  Lines expected;              // what the script prints; empty for a desktop script, which draws
  bool isForDesktop;
};

// Reads a script and the .txt file next to it. Throws std::runtime_error on failure.
Script ReadScript(const std::string& path);

// Returns the lines without their line endings.
Lines SplitIntoLines(const std::string& text);

}  // namespace projects
