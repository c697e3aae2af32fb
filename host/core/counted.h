// What every value of the host that is reference counted begins with, and the ledger that knows them all.
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

// What reference counting has to know of a kind of value.
struct CountedKind {
  const char* plural;  // "strings"
  std::string (*describe)(const Counted* value);
  void (*destroyContent)(Counted* value);  // releases what the value holds, but not its own memory
};

// The first 32 bytes of strings, objects and arrays. Arrays are read by plug-ins, which expect three words and then the
// reference count, so that this order is fixed.
struct Counted {
  const CountedKind* kind;  // null: destroyed
  Counted* previous;
  Counted* next;
  std::int64_t references;
};
static_assert(offsetof(Counted, references) == 24);

// Takes one reference; nil is allowed.
void Lock(Counted* value);

// Drops one reference; the last one destroys the value. Nil is allowed. Dropping one too many is noted in the ledger.
void Unlock(Counted* value);

// Puts a new value, which carries one reference for the caller, into the ledger.
void Enter(Counted* value, const CountedKind& kind);

// The state of all references: what is alive, and what went wrong.
struct Ledger {
  std::map<std::string, int, std::less<>> alive;  // how many of each kind
  std::vector<std::string> faults;

  bool IsBalanced() const { return alive.empty() && faults.empty(); }
};

// From now on nothing is destroyed and no fault is noted: the host is one that counts no references, for a plug-in that
// cannot take or drop them.
void StopCountingReferences();

// What is alive now, and the faults since the start.
Ledger TakeLedger();

// A few lines for people: the counts, the values that are still alive (a handful of them), the faults.
std::string DescribeLedger(const Ledger& ledger);

// Owns one reference.
template <class Value>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Value* owned) : value_(owned) {}
  Owned(const Owned& other) : value_(other.value_) { Lock(value_); }
  Owned(Owned&& other) noexcept : value_(other.Release()) {}
  // An owner of a string, object or array is an owner of a counted value.
  template <class Derived>
  requires std::is_base_of_v<Value, Derived> Owned(Owned<Derived> other) : value_(other.Release()) {}
  Owned& operator=(Owned other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Owned() { Unlock(value_); }

  Value* Get() const { return value_; }
  Value* operator->() const { return value_; }
  explicit operator bool() const { return value_ != nullptr; }
  Value* Release() {
    Value* const value = value_;
    value_ = nullptr;
    return value;
  }

 private:
  Value* value_ = nullptr;
};

}  // namespace host
