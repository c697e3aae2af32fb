// What every reference-counted value of the host begins with, and the list of the values that are alive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace host {

struct Counted;

// What reference counting has to know about a kind of value.
struct CountedKind {
  const char* name;
  std::string (*describe)(const Counted* value);
  void (*destroyContent)(Counted* value);  // releases what the value holds, but not its own memory; may be null
};

// The first 32 bytes of strings, objects and arrays. Plug-ins read arrays and expect three words and then the reference
// count, so the order is fixed.
struct Counted {
  const CountedKind* kind;  // null: destroyed
  Counted* previous;
  Counted* next;
  std::int64_t referenceCount;
};
static_assert(offsetof(Counted, referenceCount) == 24);

// Takes a reference. Nil is allowed.
void Retain(Counted* value);

// Gives a reference back; the last one destroys the value. Nil is allowed. An over-release is noted as an error.
void Release(Counted* value);

// Adds a new value, with one reference for the caller, to those that are alive.
void Track(Counted* value, const CountedKind& kind);

struct ReferenceReport {
  std::map<std::string, int, std::less<>> leaked;  // how many values of each kind are alive
  std::vector<std::string> errors;                 // uses of destroyed values, since the start

  bool IsBalanced() const { return leaked.empty() && errors.empty(); }
};

// The state of all references.
ReferenceReport ReportReferences();

// A few lines of text: how many values have leaked, a handful of them, and the errors.
std::string DescribeReferences(const ReferenceReport& report);

// From now on nothing is destroyed and no error is noted, for a plug-in that cannot retain or release.
void StopCountingReferences();

// Owns one reference.
template <class Value>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Value* owned) : value_(owned) {}
  Owned(const Owned& other) : value_(other.value_) { Retain(value_); }
  Owned(Owned&& other) noexcept : value_(other.Detach()) {}
  // An owner of a string, object or array is an owner of a counted value.
  template <class Derived>
  requires std::is_base_of_v<Value, Derived> Owned(Owned<Derived> other) : value_(other.Detach()) {}
  Owned& operator=(Owned other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Owned() { Release(value_); }

  Value* Get() const { return value_; }
  Value* operator->() const { return value_; }
  explicit operator bool() const { return value_ != nullptr; }
  // Hands the reference over to the caller.
  Value* Detach() { return std::exchange(value_, nullptr); }

 private:
  Value* value_ = nullptr;
};

// An owner of a new reference to a value that is borrowed.
template <class Value>
Owned<Value> Retained(Value* borrowed) {
  Retain(borrowed);
  return Owned<Value>(borrowed);
}

}  // namespace host
