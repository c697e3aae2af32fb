// Sorts in a protected call with a delegate that crashes. Tries a crash at every comparison, for every element type.
// The jump out of the crashed call skips the sort's destructors. The array must stay unchanged, and nothing may leak.
#include <malloc.h>

#include "plugin/arrays/array_fixture.h"
#include "plugin/process/crash_safe_fixture.h"
#include "runtime/jump_safe_memory.h"

namespace {

using tests::Choice;
using tests::TestArray;

// The number of comparisons before the delegate calls gInterrupt.
int gCallsLeft = 0;
void (*gInterrupt)() = nullptr;

void Crash() { std::raise(SIGSEGV); }

template <class T>
std::int64_t Ask(REALobject /*delegate*/, typename T::Stored a, typename T::Stored b) {
  if (--gCallsLeft < 0 && gInterrupt != nullptr) gInterrupt();
  return T::Less(a, b) ? -1 : T::Less(b, a) ? 1 : 0;
}

template <class T>
class SortInterruption : public tests::ArrayTest<T> {
 protected:
  SortInterruption() {
    auto& classes = host::Host::Current().objectClasses;
    if (classes.empty()) classes.push_back(host::MakeClass(zkt::DelegateCrashExceptionClass(), 0));
    gArray = &array_;
    gDelegate = delegate_.Get();
  }

  // Sorts another array completely to count the comparisons.
  int CountComparisons() {
    const TestArray<T> other(elements_);
    constexpr int kMany = 1'000'000;
    gCallsLeft = kMany;
    T::kSortDelegate(other.Get(), delegate_.Get(), 0);
    EXPECT_FALSE(tests::SameBits(other.Elements(), elements_)) << "sorting changed nothing";
    return kMany - gCallsLeft;
  }

  static void SortOnce(REALobjectStruct* /*delegate*/) { T::kSortDelegate(gArray->Get(), gDelegate, 0); }

  // Sorts the array during the first comparison of an outer sort. Both sorts own memory.
  static void SortInsideOfSort(REALobjectStruct* /*delegate*/) {
    const host::ObjectRef outer = host::MakeNativeDelegate(reinterpret_cast<void*>(
        +[](REALobject, typename T::Stored, typename T::Stored) -> std::int64_t { return SortOnce(nullptr), 0; }));
    const TestArray<T>& array = *gArray;
    T::kSortDelegate(array.Get(), outer.Get(), 0);
  }

  static inline const TestArray<T>* gArray = nullptr;
  static inline REALobject gDelegate = nullptr;

  const std::vector<typename T::Stored> elements_ = this->Make(12, Choice::kOrdinary);
  const TestArray<T> array_{elements_, 3};
  const host::ObjectRef delegate_ = host::MakeNativeDelegate(reinterpret_cast<void*>(&Ask<T>));
};
TYPED_TEST_SUITE(SortInterruption, tests::element::EveryDelegate, tests::element::Name);

TYPED_TEST(SortInterruption, ByACrashInAProtectedCall) {
  const int comparisons = this->CountComparisons();
  tests::RunInChild([&] {
    tests::DropLog();
    // Represents the memory of a sort outside the protected call. That memory must not be freed.
    const zkt::JumpSafeMemory outside(64);
    const auto* const ofOutside = zkt::JumpCleanup::Newest();
    ASSERT_NE(ofOutside, nullptr);
    gInterrupt = &Crash;
    for (int i = 0; i < comparisons; ++i) {
      for (const auto sort : {&TestFixture::SortOnce, &TestFixture::SortInsideOfSort}) {
        gCallsLeft = i;
        const host::ObjectRef crashing = host::MakeNativeDelegate(reinterpret_cast<void*>(sort));
        zkt::CallDelegateCrash(crashing.Get());
        const auto raised = tests::HostTest::TakeRaised();
        ASSERT_TRUE(raised && raised->errorNumber == SIGSEGV) << i;
        EXPECT_TRUE(tests::SameBits(this->array_.Elements(), this->elements_)) << i;
        EXPECT_EQ(zkt::JumpCleanup::Newest(), ofOutside) << i;
        this->ExpectReferencesIn(this->array_);
      }
    }
  });
}

// The cleanup list shows only which memory is owned. The allocator shows whether the memory was freed.
TEST(SortInterruptionMemory, IsFreedAfterACrash) {
  if (tests::kIsSanitized) GTEST_SKIP() << "the sanitizer keeps freed memory";
  const auto allocated = [] { return ::mallinfo2().uordblks; };
  const auto jumpOver = [] {
    const auto* const before = zkt::JumpCleanup::Newest();
    struct Frame {
      alignas(zkt::JumpSafeMemory) std::byte memory[sizeof(zkt::JumpSafeMemory)];
    } first, second;
    new (&first) zkt::JumpSafeMemory(10'000);
    new (&second) zkt::JumpSafeMemory(20'000);
    zkt::JumpCleanup::RunNewerThan(before);
  };
  jumpOver();  // creates the thread's cleanup list
  const auto before = allocated();
  for (int i = 0; i < 100; ++i) jumpOver();
  EXPECT_EQ(allocated(), before);
}

// Blocks may be freed in any order.
TEST(SortInterruptionMemory, IsFreedInAnyOrder) {
  auto first = std::make_unique<zkt::JumpSafeMemory>(8);
  const auto* const ofFirst = zkt::JumpCleanup::Newest();
  auto second = std::make_unique<zkt::JumpSafeMemory>(8), third = std::make_unique<zkt::JumpSafeMemory>(8);
  second.reset();
  third.reset();
  EXPECT_EQ(zkt::JumpCleanup::Newest(), ofFirst);
  first.reset();
  EXPECT_EQ(zkt::JumpCleanup::Newest(), nullptr);
}

TEST(SortInterruptionMemory, IsNullWhenUnavailable) {
  // The sanitizer aborts the process if the size of an allocation exceeds the sanitizer's limit.
  for (const std::size_t bytes : {SIZE_MAX, tests::kIsSanitized ? SIZE_MAX - 1 : SIZE_MAX / 2})
    EXPECT_EQ(zkt::JumpSafeMemory(bytes).Get(), nullptr) << bytes;
  EXPECT_EQ(zkt::JumpCleanup::Newest(), nullptr);
}

}  // namespace
