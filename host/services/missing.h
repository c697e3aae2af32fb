// Records a plug-in's requests for missing services, framework functions and object methods.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

struct MissingRequests {
  std::vector<std::string> names;  // in the order of the first request
  // Whether a request returns, instead of null, an address that identifies the request and crashes the process when
  // called. Plug-ins that test for null then behave differently.
  bool areTrapped = false;
};
inline MissingRequests gMissing;

// Records a request. Returns null or, with `areTrapped`, the address that identifies the request.
void* Missing(const char* name);

// Whether a call's target address is null or identifies a missing service, and the name of that service.
struct MissingCall {
  bool isMissing;
  const char* name;  // null for a call to null
};
MissingCall FindMissingCall(std::uintptr_t address);

}  // namespace host
