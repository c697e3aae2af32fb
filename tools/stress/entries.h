// What a plug-in offers: one entry for everything that Xojo code can make it run; and what its author expects of
// particular entries, in a file of sections (docs/stress.md).
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "declarations/catalogue.h"
#include "declarations/native_call.h"

namespace stress {

// The sections, and what their values are.
inline constexpr std::string_view kEndsWith = "ends-with";  // SIGABRT, or argument: 8 bits of it are the exit status
inline constexpr std::string_view kStartsProgram = "starts-program";              // the parameter that is its path
inline constexpr std::string_view kCatchesCrashes = "catches-crashes";            // true: of the delegates that it gets
inline constexpr std::string_view kOneThreadOnly = "one-thread-only";             // true
inline constexpr std::string_view kMayDifferOnThreads = "may-differ-on-threads";  // true
inline constexpr std::string_view kMayDifferWithoutServices = "may-differ-without-services";  // true
inline constexpr std::string_view kWords = "words";            // texts for parameters and properties of the name
inline constexpr std::string_view kMayBeSlow = "may-be-slow";  // combining-marks: in texts

using Texts = std::vector<std::string>;

class Expectations {
 public:
  // Reads a file; an empty name stands for no expectations. Throws std::runtime_error for what it cannot read.
  explicit Expectations(const std::string& file);

  // The values by section for the label of an entry, or for the name of a parameter.
  std::map<std::string_view, Texts> About(std::string_view label) const;

 private:
  struct Item {
    std::string name;
    std::string_view section;
    Texts values;
  };
  std::vector<Item> items_;
};

struct Entry {
  std::string label;                        // "SortZKT.SumArrayZKT(Int32(), Integer, Integer)"
  std::vector<host::Parameter> parameters;  // without the instance
  std::function<host::Value(const std::vector<host::Argument>&)> call;
  const host::ObjectClass* type = nullptr;  // of the instance that comes before the arguments; null: there is none
  const void* function = nullptr;           // of a method
  std::map<std::string_view, Texts> expectations = {};  // by section
};

// All entries of the plug-in in the order of registration: methods, getters and setters, and for each class making and
// destroying an object. They refer to the catalogue.
std::vector<Entry> EntriesOf(const host::Catalogue& catalogue, const Expectations& expectations);

}  // namespace stress
