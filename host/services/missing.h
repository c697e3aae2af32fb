// Records a plug-in's requests for missing services, framework functions and object methods.
#pragma once

#include <cstdint>
#include <optional>
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

// Returns the name of the missing service that the target address of a call identifies; null if the address is null,
// and nullopt for any other address.
std::optional<const char*> FindMissingCall(std::uintptr_t address);

}  // namespace host
