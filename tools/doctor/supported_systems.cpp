// The documentation lists the systems that a package supports. A build that requires newer systems must not be
// published unnoticed.
#include <filesystem>
#include <regex>
#include <sstream>

#include "doctor/doctor.h"
#include "doctor/package.h"

namespace doctor {

namespace {

// Returns whether the package has the library in this table row. Reports differences between the library and the row.
bool ComparePromise(const std::smatch& row, Report& report) {
  const std::string file = row[1], architecture = row[2], minimum = row[4], what = file + " for " + architecture;
  const Library* const library = report.Find(file, row[3] == "macOS" ? System::MacOS : System::Linux, architecture);
  report.findings.ProblemIf(library == nullptr, what + " is missing", kPromise);
  if (library == nullptr) return false;
  report.findings.NoteIf(IsNewer(library->minimum, minimum),
                         what + " requires version " + library->minimum + ", but the page states " + minimum, kPromise);
  report.findings.NoteIf(library->name.find(std::filesystem::path(file).stem()) == std::string::npos,
                         what + " has the unexpected name " + library->name, kPromise);
  return true;
}

}  // namespace

void CompareSupportedSystems(const std::string& page, Report& report) {
  const std::regex rowPattern(R"(\| `(.+)` \| (\S+) \| (macOS|glibc) (\d+\.\d+) .*)");
  std::istringstream lines(ReadWholeFile(page));
  std::size_t rows = 0, found = 0;
  std::smatch row;
  for (std::string line; std::getline(lines, line);) {
    if (!std::regex_match(line, row, rowPattern)) continue;
    ++rows;
    if (ComparePromise(row, report)) ++found;
  }
  if (rows == 0)
    throw std::runtime_error(page +
                             ": no table of libraries found; its rows begin like | `PATH` | arm64 | macOS 11.0 |");
  report.findings.NoteIf(report.libraries.size() > found, "it contains libraries that the page does not list",
                         kPromise);
}

}  // namespace doctor
