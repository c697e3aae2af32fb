// Access to a host service by name, through the resolver that the host passes at start-up. The first call binds the
// service. An absent service returns the neutral value of its result type and is looked up again on the next call,
// because the host may add it later. Every thread that binds a name stores the same pointer.
#pragma once

#include <atomic>
#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The host's resolver. Null until REALPluginMain stores it.
inline std::atomic<Resolver> gResolver{nullptr};

struct HostBindingTestAccess;

// A pointer that is looked up on each use until it is found, and then cached.
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

// Asks the host's resolver. Returns null if there is no resolver.
void* ResolveHostService(const char* name);

// Asks the host for a function of its framework, by its declaration.
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

  // Returns the host's function or null. For the few callers that behave differently if the service is absent.
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

// A host service that returns the procedure for the elements of an array.
template <class Signature, class Array>
class ArrayProcedure;

template <class Result, class Array, class... Arguments>
class ArrayProcedure<Result(Arguments...), Array> {
 public:
  constexpr explicit ArrayProcedure(const char* name) : procedureOf_(name) {}

  // Runs the procedure on the array. Without a procedure, it does nothing and returns Result().
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
