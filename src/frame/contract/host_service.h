// How a host service is reached: by name, through the resolver that the host hands over at start.
// Binding happens at the first call. An absent service answers the neutral value of its result type and is asked for
// again at the next call, because a host may bring it later. Every thread that binds a name stores the same pointer.
#pragma once

#include <atomic>
#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The host's resolver, stored by REALPluginMain; null before.
inline std::atomic<Resolver> gResolver{nullptr};

struct HostBindingTestAccess;

// A pointer that is looked up once, and again while it is absent.
class HostBinding {
 public:
  using Lookup = void* (*)(const char* name);

  constexpr HostBinding(const char* name, Lookup lookup) : name_(name), lookup_(lookup) {}

  void* Get() {
    if (void* const bound = slot_.load(std::memory_order_relaxed)) return bound;
    return Ask();
  }

 private:
  friend struct HostBindingTestAccess;

  void* Ask();

  std::atomic<void*> slot_{nullptr};
  const char* name_;
  Lookup lookup_;
};

// Asks the host's resolver; null when there is none.
void* ResolveHostService(const char* name);

// Asks the host for one of its framework's functions by its declaration text.
void* LoadFrameworkMethod(const char* declaration);

template <class Signature>
class HostService;

// A host function of a fixed name. Calling it when the host has none does nothing and gives Result().
template <class Result, class... Arguments>
class HostService<Result(Arguments...)> {
 public:
  using Function = Result (*)(Arguments...);

  constexpr explicit HostService(const char* name, HostBinding::Lookup lookup = &ResolveHostService)
      : binding_(name, lookup) {}

  // The host's function, or null. For the few places where an absent service changes what happens.
  Function Get() { return reinterpret_cast<Function>(binding_.Get()); }

  Result operator()(Arguments... arguments) {
    if (const Function function = Get()) return function(arguments...);
    return Result();
  }

 private:
  friend struct HostBindingTestAccess;

  HostBinding binding_;
};

// A host service that hands out, for an array, the procedure that works on its elements.
template <class Signature, class Array>
class ArrayProcedure;

template <class Result, class Array, class... Arguments>
class ArrayProcedure<Result(Arguments...), Array> {
 public:
  constexpr explicit ArrayProcedure(const char* name) : procedureOf_(name) {}

  // Runs the procedure on the array; without one nothing happens and Result() is given.
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
