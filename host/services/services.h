// The services that the host offers to plug-ins, by name.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host.h"
#include "core/host_access.h"

namespace host {

// Thrown by a service when a failure is injected.
class ServiceFailure : public std::runtime_error {
 public:
  ServiceFailure() : runtime_error("injected failure of a host service") {}
};

// Instruments a service for the stress checks: each call acquires the host, and calls can be made to fail.
template <auto* function, bool kCanFail>
struct Instrumented;

template <class Result, class... Arguments, Result (*function)(Arguments...), bool kCanFail>
struct Instrumented<function, kCanFail> {
  static Result Call(Arguments... arguments) {
    const HoldHost hold;
    if (kCanFail && Host::Current().serviceFailures.ShouldFail()) throw ServiceFailure();
    return function(arguments...);
  }
};

struct Service {
  const char* name;
  void* function;
  void* instrumented;
};

template <auto* function, bool kCanFail = true>
Service MakeService(const char* name) {
  return {name, reinterpret_cast<void*>(function), reinterpret_cast<void*>(&Instrumented<function, kCanFail>::Call)};
}

// The declaration of the only framework function that plug-ins can load.
inline constexpr const char* kLenB = "LenB( s as string ) as integer";

// The resolver for plug-ins. Returns the service's function, or its instrumented version if the host instruments
// services. For a missing service, returns the result of Missing.
void* Resolve(const char* name);

// Lists everything that can be withheld: services by name, and framework functions and object methods by declaration.
std::vector<std::string> WithholdableNames();

// The services, by subject.
std::vector<Service> RegistrationServices();
std::vector<Service> StringServices();
std::vector<Service> ObjectServices();
std::vector<Service> ArrayServices();

}  // namespace host
