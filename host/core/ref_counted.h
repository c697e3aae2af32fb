// The header of every reference-counted value, and the list of live values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace host {

struct RefCounted;

// A kind of reference-counted value.
struct RefCountedKind {
  const char* name;
  std::string (*describe)(const RefCounted* value);
  void (*destroyContent)(RefCounted* value);  // releases the content but not the value's own memory; may be null
};

// The first 32 bytes of strings, objects and arrays. The order is fixed: plug-ins expect an array to begin with three
// words, followed by the reference count.
struct RefCounted {
  const RefCountedKind* kind;  // null once the value is destroyed
  RefCounted* previous;
  RefCounted* next;
  std::int64_t referenceCount;
};
static_assert(offsetof(RefCounted, referenceCount) == 24);

// Adds a reference. Nil is allowed.
void Retain(RefCounted* value);

// Drops a reference; dropping the last one destroys the value. Nil is allowed. An over-release is recorded as an error.
void Release(RefCounted* value);

// Adds a new value to the list of live values, with one reference for the caller.
void Track(RefCounted* value, const RefCountedKind& kind);

struct ReferenceReport {
  std::map<std::string, int, std::less<>> leaked;  // the number of live values of each kind
  std::vector<std::string> errors;                 // reference-counting errors since the process started

  bool IsBalanced() const { return leaked.empty() && errors.empty(); }
};

// Reports all live values and errors.
ReferenceReport ReportReferences();

// Formats the report: the number of leaked values, descriptions of up to ten of them, and the errors.
std::string DescribeReferences(const ReferenceReport& report);

// Stops destroying values and recording errors, for a plug-in that cannot retain or release.
void StopCountingReferences();

// Owns one reference.
template <class Value>
class Ref {
 public:
  Ref() = default;
  explicit Ref(Value* owned) : value_(owned) {}
  Ref(const Ref& other) : value_(other.value_) { Retain(value_); }
  Ref(Ref&& other) noexcept : value_(other.Detach()) {}
  // A reference to a derived type converts to a reference to its base, such as RefCounted.
  template <class Derived>
  requires std::is_base_of_v<Value, Derived> Ref(Ref<Derived> other) : value_(other.Detach()) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Ref() { Release(value_); }

  Value* Get() const { return value_; }
  Value* operator->() const { return value_; }
  explicit operator bool() const { return value_ != nullptr; }
  // Transfers the reference to the caller.
  Value* Detach() { return std::exchange(value_, nullptr); }

 private:
  Value* value_ = nullptr;
};

// Retains a borrowed value and returns the new reference.
template <class Value>
Ref<Value> Retained(Value* borrowed) {
  Retain(borrowed);
  return Ref<Value>(borrowed);
}

}  // namespace host
