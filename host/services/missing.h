// What a plug-in requests although the host lacks it: services, framework functions and object methods.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

struct MissingRequests {
  std::vector<std::string> names;  // in the order of the first request
  // Whether a request returns an address that identifies it and ends the process when it is called. Plug-ins that test
  // for null then behave differently.
  bool areTrapped = false;
};
inline MissingRequests gMissing;

// Records the request. Returns null, or the address that identifies it.
void* Missing(const char* name);

// What the code calls at this address, if the call is to null or to something missing.
struct MissingCall {
  bool isMissing;
  const char* name;  // null for a call to null
};
MissingCall FindMissingCall(std::uintptr_t address);

}  // namespace host
