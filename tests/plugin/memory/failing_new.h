// An operator new that fails on request. A program that uses it must link failing_new.cpp and have only one thread.
#pragma once

namespace tests {

enum class Failure { kNone, kOnce, kAllLater };

// While in scope, fails the nth allocation after construction, or that allocation and all later ones.
class FailingNew {
 public:
  FailingNew(int nth, Failure failure);
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;
  ~FailingNew() { Stop(); }

  // Ends the failures before the end of the scope. Returns whether an allocation has failed.
  bool Stop();
};

// While in scope, allocations do not fail and are not counted.
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
