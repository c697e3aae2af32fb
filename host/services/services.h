// The functions that the host offers to plug-ins, by name.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host.h"
#include "core/host_access.h"

namespace host {

// What a service throws when it is told to fail.
class ServiceFailure : public std::runtime_error {
 public:
  ServiceFailure() : runtime_error("a service of the host has failed") {}
};

// What a service call goes through while plug-ins are stress tested.
template <auto* function, bool kCanFail>
struct Supervised;

template <class Result, class... Arguments, Result (*function)(Arguments...), bool kCanFail>
struct Supervised<function, kCanFail> {
  static Result Call(Arguments... arguments) {
    const HoldHost hold;
    if (kCanFail && Host::Current().serviceFailures.Strikes()) throw ServiceFailure();
    return function(arguments...);
  }
};

struct Service {
  const char* name;
  void* function;
  void* supervised;  // the same under supervision
};

template <auto* function, bool kCanFail = true>
Service MakeService(const char* name) {
  return {name, reinterpret_cast<void*>(function), reinterpret_cast<void*>(&Supervised<function, kCanFail>::Call)};
}

// The framework function that plug-ins load by its declaration.
inline constexpr const char* kLenB = "LenB( s as string ) as integer";

// The resolver that plug-ins get: the function of a service, supervised if the current host wants it so, or null.
void* Resolve(const char* name);

// Everything that can be withheld: the services by name, what they load by its declaration.
std::vector<std::string> WithholdableNames();

// One table for each kind of value.
std::span<const Service> RegistrationServices();
std::span<const Service> StringServices();
std::span<const Service> ObjectServices();
std::span<const Service> ArrayServices();

}  // namespace host
