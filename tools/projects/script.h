// An example script, taken apart: a Xojo item has no code outside of methods.
#pragma once

#include <string>
#include <vector>

namespace projects {

using Lines = std::vector<std::string>;

struct Script {
  std::string fileName;        // split_text.xojo
  std::string name;            // SplitText
  Lines statements;            // with the comments outside of methods
  std::vector<Lines> methods;  // each from its declaration to its end
  Lines expected;              // what it prints; empty for a desktop script, which draws
  bool isForDesktop;
};

// Reads a script and the .txt file next to it. Throws std::runtime_error.
Script ReadScript(const std::string& path);

// The lines, without their line endings.
Lines SplitIntoLines(const std::string& text);

}  // namespace projects
