// The entries of a plug-in: everything in it that Xojo code can run. A file can state the author's expectations about
// particular entries (docs/stress.md).
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "declarations/catalogue.h"
#include "declarations/native_call.h"

namespace stress {

// The sections of an expectations file, with the values that they take.
inline constexpr std::string_view kEndsWith = "ends-with";  // a signal, or "argument": its low byte is the exit status
inline constexpr std::string_view kStartsProgram = "starts-program";    // the parameter with the program's path
inline constexpr std::string_view kCatchesCrashes = "catches-crashes";  // true if the entry's delegates may crash
inline constexpr std::string_view kOneThreadOnly = "one-thread-only";   // true
inline constexpr std::string_view kMayDifferOnThreads = "may-differ-on-threads";              // true
inline constexpr std::string_view kMayDifferWithoutServices = "may-differ-without-services";  // true
inline constexpr std::string_view kReadsState = "reads-state";  // true if results depend on earlier calls
inline constexpr std::string_view kWords = "words";             // strings for a parameter or property, by name
inline constexpr std::string_view kMayBeSlow = "may-be-slow";   // "combining-marks": slow on strings of combining marks

using Texts = std::vector<std::string>;

class Expectations {
 public:
  // Reads a file; an empty name means no expectations. Throws std::runtime_error if the file is invalid.
  explicit Expectations(const std::string& file);

  // Returns the values by section for an entry's label or a parameter's name.
  std::map<std::string_view, Texts> About(std::string_view label) const;

 private:
  std::map<std::string, std::map<std::string_view, Texts>, host::NameOrder> items_;  // by name and section
};

struct Entry {
  std::string label;                        // such as "SortZKT.SumArrayZKT(Int32(), Integer, Integer)"
  std::vector<host::Parameter> parameters;  // without the instance
  std::function<host::Value(const std::vector<host::Argument>&)> call;
  const host::ObjectClass* type = nullptr;  // of the instance that precedes the arguments; null if there is none
  const void* function = nullptr;           // the method's native function
  std::map<std::string_view, Texts> expectations = {};  // by section
};

// What a plug-in declares, and what its author expects.
struct Declared {
  const host::Catalogue& catalogue;
  const std::vector<Entry>& entries;
  const Expectations& expectations;
};

// Returns all entries of the plug-in: methods, then getters and setters, then the creation and destruction of an object
// of each class, each in registration order. The entries point into the catalogue.
std::vector<Entry> EntriesOf(const host::Catalogue& catalogue, const Expectations& expectations);

}  // namespace stress
