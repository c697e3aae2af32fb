// What a plug-in offers, one entry for everything that Xojo code can make it run.
#pragma once

#include <string>
#include <vector>

#include "declarations/catalogue.h"

namespace host::validate {

// Nearly everything is called and judged alike; these are the exceptions.
enum class Driving {
  kPlain,
  kEndsProcess,       // called apart: how the process ends is what is judged
  kStartsProgram,     // called with programs that do nothing, which are reaped
  kProtectsDelegate,  // called with delegates that crash too
};

enum class EntryKind { kMethod, kGetter, kSetter, kLife };

struct Entry {
  EntryKind kind;
  std::string label;                   // "SortZKT.SumArrayZKT(Int32(), Integer, Integer)"
  const Method* method = nullptr;      // of kMethod
  const Property* property = nullptr;  // of kGetter and kSetter
  const ObjectClass* type = nullptr;   // what an instance is needed of, or is made and destroyed
  Driving driving = Driving::kPlain;
};

// All entries of the plug-in, in the order of registration. They point into the catalogue.
std::vector<Entry> EntriesOf(const Catalogue& catalogue);

}  // namespace host::validate
