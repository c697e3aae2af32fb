// The functions that the host offers to plug-ins, by name.
#pragma once

#include <span>
#include <string_view>

namespace host {

struct Service {
  const char* name;
  void* function;
};

template <class Function>
Service MakeService(const char* name, Function* function) {
  return {name, reinterpret_cast<void*>(function)};
}

// The function of a service, or null.
void* FindService(std::string_view name);

// One table for each kind of value.
std::span<const Service> RegistrationServices();
std::span<const Service> StringServices();
std::span<const Service> ObjectServices();
std::span<const Service> ArrayServices();

}  // namespace host
