// Calls host services by name, through the resolver that the host passes at start-up. The first call binds the service.
// If the service is absent, the call returns the zero value of its result type, and the next call looks the service up
// again, because the host may add it later. It is safe for several threads to bind a service at the same time, because
// they all store the same pointer.
#pragma once

#include <atomic>
#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The host's resolver. Null until REALPluginMain stores it.
inline std::atomic<Resolver> gResolver{nullptr};

struct HostBindingTestAccess;

// A function pointer that is looked up by name on each use until it is found, and cached from then on.
class HostBinding {
 public:
  using Lookup = void* (*)(const char* name);

  constexpr HostBinding(const char* name, Lookup lookup) : name_(name), lookup_(lookup) {}

  void* Get() {
    if (void* const bound = slot_.load(std::memory_order_relaxed)) [[likely]]
      return bound;
    return Ask();
  }

 private:
  friend struct HostBindingTestAccess;

  void* Ask();

  std::atomic<void*> slot_{nullptr};
  const char* name_;
  Lookup lookup_;
};

// Looks up a service with the host's resolver. Returns null if there is no resolver or no such service.
void* ResolveHostService(const char* name);

// Looks up a function of the host's framework by its declaration.
void* LoadFrameworkMethod(const char* declaration);

template <class Signature>
class HostService;

// A host function with a fixed name. If the host lacks it, a call does nothing and returns Result().
template <class Result, class... Arguments>
class HostService<Result(Arguments...)> {
 public:
  using Function = Result (*)(Arguments...);

  constexpr explicit HostService(const char* name, HostBinding::Lookup lookup = &ResolveHostService)
      : binding_(name, lookup) {}

  // Returns the host's function, or null if it is absent. Needed only by the few callers that behave differently
  // without the service.
  Function Get() { return reinterpret_cast<Function>(binding_.Get()); }

  Result operator()(Arguments... arguments) {
    if (const Function function = Get()) [[likely]]
      return function(arguments...);
    return Result();
  }

 private:
  friend struct HostBindingTestAccess;

  HostBinding binding_;
};

// Wraps a host service that returns a procedure for accessing an array's elements, and calls that procedure.
template <class Signature, class Array>
class ArrayProcedure;

template <class Result, class Array, class... Arguments>
class ArrayProcedure<Result(Arguments...), Array> {
 public:
  constexpr explicit ArrayProcedure(const char* name) : procedureOf_(name) {}

  // Calls the procedure for the array. Does nothing and returns Result() if there is no procedure.
  Result operator()(Array* array, Arguments... arguments) {
    if (const Procedure procedure = procedureOf_(array)) return procedure(array, arguments...);
    return Result();
  }

 private:
  friend struct HostBindingTestAccess;

  using Procedure = Result (*)(Array*, Arguments...);

  HostService<Procedure(Array*)> procedureOf_;
};

}  // namespace zkt
