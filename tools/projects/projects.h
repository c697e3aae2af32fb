// The Xojo projects: console examples, a window with rotated text, and a program that checks the examples in Xojo.
#pragma once

#include <map>
#include <string>

namespace projects {

using Files = std::map<std::string, std::string>;  // contents by path

// Makes all projects from the scripts in the examples folder. The templates folder contains a folder of handwritten
// items for each project, and the "common" folder.
Files MakeProjects(const std::string& examples, const std::string& templates);

}  // namespace projects
