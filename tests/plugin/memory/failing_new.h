// An operator new that can be made to fail. An executable that uses it links failing_new.cpp and has one thread.
#pragma once

namespace tests {

enum class Failure { kNone, kOnce, kAllLater };

// While in scope, makes the nth allocation after construction fail, alone or with all later ones.
class FailingNew {
 public:
  FailingNew(int nth, Failure failure);
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;
  ~FailingNew() { Stop(); }

  // Ends the failures before the scope does. Returns whether an allocation has failed.
  bool Stop();
};

// Allocations are neither counted nor fail, for a scope.
class ReliableNew {
 public:
  ReliableNew();
  ReliableNew(const ReliableNew&) = delete;
  ReliableNew& operator=(const ReliableNew&) = delete;
  ~ReliableNew();

 private:
  bool before_;
};

}  // namespace tests
