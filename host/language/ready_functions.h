// Functions that a script can name behind AddressOf, since it cannot write its own.
#pragma once

#include <string_view>

#include "language/native_call.h"

namespace host {

struct ReadyFunction {
  std::string_view name;
  bool (*suits)(const Signature& signature);  // whether it can be called with what a delegate is called with
  DelegateTarget target;                      // gives an Int64 where there is a result
};

// Null if there is no function of that name.
const ReadyFunction* FindReadyFunction(std::string_view name);

}  // namespace host
