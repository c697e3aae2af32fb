// The functions that the host offers to plug-ins, by name.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct Service {
  const char* name;
  void* function;
};

template <class Function>
Service MakeService(const char* name, Function* function) {
  return {name, reinterpret_cast<void*>(function)};
}

// The framework function that plug-ins load by its declaration.
inline constexpr const char* kLenB = "LenB( s as string ) as integer";

// The function of a service, or null.
void* FindService(std::string_view name);

// Everything that can be withheld: the services by name, what they load by its declaration.
std::vector<std::string> WithholdableNames();

// One table for each kind of value.
std::span<const Service> RegistrationServices();
std::span<const Service> StringServices();
std::span<const Service> ObjectServices();
std::span<const Service> ArrayServices();

}  // namespace host
