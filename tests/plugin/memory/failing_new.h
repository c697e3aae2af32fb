// Operator new that can be told to fail. An executable that uses it links failing_new.cpp, and has one thread.
#pragma once

namespace tests {

enum class Failure { kNone, kOnce, kFromThereOn };

// While it lives, the nth allocation from now on fails, alone or with all that follow.
class FailingNew {
 public:
  FailingNew(int nth, Failure failure);
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;
  ~FailingNew() { Stop(); }

  // Ends it before the scope does, and tells whether an allocation has failed.
  bool Stop();
};

// Allocations that are neither counted nor fail, for a scope.
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
