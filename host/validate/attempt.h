// One call of a plug-in, judged.
#pragma once

#include <array>
#include <optional>
#include <stdexcept>
#include <string>

#include "core/shortage.h"
#include "declarations/catalogue.h"
#include "validate/apart.h"
#include "validate/entries.h"

namespace host::validate {

// Something is wrong with the plug-in.
class Finding : public std::runtime_error {
  using runtime_error::runtime_error;
};

// What runs out during a call: nothing, if there is no shortage.
struct Lack {
  Shortage* shortage = nullptr;
  std::int64_t nth = 0;
  bool fromThereOn = false;
};

struct Outcome {
  std::string text;  // the result, or the exception
  bool wasRaised = false;
  bool isNeutral = false;  // zero, false, nil, empty, or no result at all
};

// Calls the entry with the arguments that follow from the seed. Throws Finding if it leaves references behind or too
// few, gives what is not of its declared type, or lets a C++ exception out. Given a report, writes what is called there
// first.
Outcome AttemptOnce(const Catalogue& catalogue, const Entry& entry, std::uint64_t seed, const Lack& lack,
                    Report* report);

// The same, but a call that keeps memory or a file descriptor is made again. Throws Finding if it does so each time.
Outcome Attempt(const Catalogue& catalogue, const Entry& entry, std::uint64_t seed, const Lack& lack, Report* report);

// Calls the entry many times on two threads at once, on each with arguments that follow from its own seed. Throws
// Finding if references are wrong afterwards, and, if results are compared, for one that differs from the first.
void AttemptTogether(const Catalogue& catalogue, const Entry& entry, const std::array<std::uint64_t, 2>& seeds,
                     bool comparesResults, Report* report);

// Whether the ledger is judged: not on a host that counts no references.
extern bool gJudgesLedger;

}  // namespace host::validate
