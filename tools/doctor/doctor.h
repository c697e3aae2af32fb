// Inspects a plug-in package or library without loading it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/library.h"

namespace doctor {

struct Report {
  std::vector<Library> libraries;  // one for each file and processor
  Findings findings;               // about the whole

  // Returns the library of that file for that system and processor, or null.
  const Library* Find(std::string_view file, System system, std::string_view architecture) const;
};

// Inspects a package, its folder, or a single library. Notes each of the texts `unwanted` that a library contains, such
// as a path of the machine that built it; the usual folders of such machines are always unwanted. Reports damaged files
// as problems. Throws only if the path cannot be read.
Report Inspect(const std::string& path, std::vector<std::string> unwanted);

// Adds how a package differs from the table of its libraries in a Markdown page. A row of the table begins with
// "| `PATH IN THE PACKAGE` | PROCESSOR | SYSTEM VERSION |". Throws if the page has no such row.
void ComparePromises(const std::string& page, Report& report);

// The Linux machine that this program runs on.
struct Machine {
  std::string architecture;
  std::string libc;
};
Machine ThisMachine();

}  // namespace doctor
