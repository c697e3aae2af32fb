// Inspects a plug-in package or library without loading it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/library.h"

namespace doctor {

struct Report {
  std::vector<Library> libraries;  // one per file and processor
  Findings findings;               // about the package as a whole

  // Returns the library in the given file for the given system and processor; null if there is none.
  const Library* Find(std::string_view file, System system, std::string_view architecture) const;
};

// Inspects a package, its unpacked folder, or a single library. Adds a note for each of the `unwanted` strings that a
// library contains, such as a path on the build machine; the usual build folders are always unwanted. Reports damaged
// files as problems. Throws only if the path cannot be read.
Report Inspect(const std::string& path, std::vector<std::string> unwanted);

// Returns whether Xojo looks for a library at this path in a package.
bool IsInTargetFolder(const std::string& path);

// Adds findings for the differences between a package and the table of its libraries in a Markdown page. Table rows
// begin with "| `PATH IN THE PACKAGE` | PROCESSOR | SYSTEM VERSION |". Throws if the page has no such row.
void CompareSupportedSystems(const std::string& page, Report& report);

// Returns a path from which this machine can load the plug-in at `path`, which is a library, a package or a package's
// folder. The library in a zip archive is unpacked into memory and stays there for this process and its children.
// Throws std::runtime_error if the plug-in is for other systems or processors.
std::string LoadablePlugin(const std::string& path);

}  // namespace doctor
