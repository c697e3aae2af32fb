// Tests that the plug-in verifies the memory layout of the host's arrays once, before its first direct access to
// elements.
#include "arrays/array_access.h"

#include <barrier>
#include <chrono>
#include <thread>
#include <utility>

#include "plugin/arrays/array_fixture.h"

namespace {

using namespace tests;
using zkt::ArrayAccess;

using CorruptLayout = void (*)(host::Array*);

CorruptLayout gCorrupt = nullptr;
int gCreations = 0;
host::Array* gCreated = nullptr;

host::Array* CreateCorrupted(std::int64_t elementType, std::int64_t upperBound) {
  ++gCreations;
  EXPECT_EQ(elementType, 11);
  EXPECT_EQ(upperBound, 1234);
  gCreated = host::MakeArray({host::TypeKind::kInt64, false, {}}, upperBound);
  if (gCorrupt != nullptr) gCorrupt(gCreated);
  return gCreated;
}

void CorruptDimensions(host::Array* array) { array->dimensions[0] = 2; }
// Moves the upper bound to its place in the other layout.
void SwapUpperBound(host::Array* array) { std::swap(array->dimensions[3], array->dimensions[5]); }

class ArrayAccessTest : public tests::ArrayHostTest {
 protected:
  ArrayAccessTest() { Restart(2024.03, nullptr); }

  static void Restart(double version, CorruptLayout corrupt) {
    SetVersion(version);
    gCorrupt = corrupt;
    gCreations = 0;
    zkt::gArrayAccess = ArrayAccess::kNotVerified;
  }

  // The first use fails and traces `line`. The second use fails without repeating the check.
  static void ExpectFailure(const std::string& line) {
    const TestArray<tests::element::Int32> numbers({1, 2, 3});
    const std::string trace = tests::TraceOf([&] {
      for (int i = 0; i < 2; ++i) EXPECT_EQ(zkt::GetArrayBasePointer(numbers.Get()), nullptr) << line;
    });
    EXPECT_EQ(trace, "TestArray " + std::to_string(zkt::rbversion) + "|" + line + "|");
    ExpectNothingRaised(line);
    EXPECT_LE(gCreations, 1) << line;
    EXPECT_EQ(zkt::gArrayAccess.load(), ArrayAccess::kFailed) << line;
  }

  const ServiceReplaced<decltype(zkt::REALCreateArray)> create_{zkt::REALCreateArray, CreateCorrupted};
};

TEST_F(ArrayAccessTest, IsProvenInBothLayouts) {
  for (const double version : {2010.0, 2020.02, 2021.0, 2024.03}) {
    Restart(version, nullptr);
    const TestArray<tests::element::Double> numbers({1.5, -2.0});
    const double* first = nullptr;
    const auto use = [&] { first = zkt::GetArrayBasePointer(numbers.Get()); };
    EXPECT_EQ(tests::TraceOf(use), "TestArray " + std::to_string(version) + "|");
    EXPECT_EQ(zkt::GetArrayBasePointer(numbers.Get()), first);
    ASSERT_NE(first, nullptr) << version;
    EXPECT_EQ(first[1], -2.0);
    EXPECT_EQ(gCreations, 1);
  }
}

TEST_F(ArrayAccessTest, FailsInEveryOtherLayout) {
  static std::int64_t elsewhere[1235];
  const struct {
    const char* line;
    double version;
    CorruptLayout corrupt;
  } faults[] = {
      {"Index 1 failed 5000000000", 2024.03, [](host::Array* a) { host::ElementAt<std::int64_t>(a, 1) = 5000000000; }},
      {"refCount wrong 2", 2024.03, [](host::Array* a) { host::Retain(a); }},
      {"DimensionCount wrong 2", 2021.0, &CorruptDimensions},
      {"DimensionCount wrong 4294967297", 2021.0, [](host::Array* a) { a->dimensions[1] = 1; }},
      {"DimensionCount wrong -1", 2020.02, [](host::Array* a) { a->dimensions[0] = -1; }},
      {"ubound wrong 1233", 2024.03, [](host::Array* a) { --a->dimensions[5]; }},
      {"ubound wrong -7", 2020.02, [](host::Array* a) { a->dimensions[3] = -7; }},
      {"ubound wrong 0", 2021.0, &SwapUpperBound},
      {"ubound wrong 0", 2020.99, &SwapUpperBound},
      {"data is nil", 2024.03, [](host::Array* a) { a->data = nullptr; }},
      {"Index 0 failed 0", 2024.03, [](host::Array* a) { a->data = reinterpret_cast<char*>(elsewhere); }},
      {"Index 9 failed -3", 2024.03,
       [](host::Array* a) { (a->data = reinterpret_cast<char*>(elsewhere), elsewhere[0] = 12345, elsewhere[9] = -3); }},
  };
  for (const auto& fault : faults) {
    Restart(fault.version, fault.corrupt);
    ExpectFailure(fault.line);
    if (fault.line == std::string("refCount wrong 2")) host::Release(gCreated);
  }
  Restart(2024.03, &CorruptDimensions);
  const TestArray<tests::element::Ptr> pointers({1});
  const auto use = [&] { EXPECT_EQ(zkt::GetArrayBasePointer(pointers.Get()), nullptr); };
  EXPECT_EQ(tests::LogOf(use), "") << "silent without debugging";
}

TEST_F(ArrayAccessTest, FailsWithoutHostServices) {
  const auto expect = [](const char* line, const auto& /*in effect during the call*/) {
    ExpectFailure(line);
    Restart(2024.03, nullptr);
  };
  expect("ubound failed 1233",
         ServiceReplaced(zkt::REALGetArrayUBound, [](host::Array*) { return std::int64_t{1233}; }));
  expect("ubound failed 0", ServiceWithheld(zkt::REALGetArrayUBound));
  expect("Index 0 failed 0", ServiceWithheld(zkt::REALGetArrayValueInteger));
  expect("Index 0 failed 0", ServiceWithheld(zkt::REALSetArrayValueInteger));
  static const auto writeFirstOnly = [](host::Array* array, std::int64_t value, std::int64_t index) {
    if (index == 0) host::ElementAt<std::int64_t>(array, index) = value;
  };
  expect("Index 9 failed 0",
         ServiceReplaced(zkt::REALSetArrayValueInteger, [](host::Array*) { return +writeFirstOnly; }));
  expect("Failed to allocate array",
         ServiceReplaced(zkt::REALCreateArray, [](std::int64_t, std::int64_t) -> void* { return nullptr; }));
  expect("Failed to allocate array", ServiceWithheld(zkt::REALCreateArray));
}

TEST_F(ArrayAccessTest, WritesOnlyWithinTheUpperBoundOfTheHost) {
  static int calls;
  calls = 0;
  // The upper bound is correct on the first call and too small on later calls.
  const ServiceReplaced shrinks(zkt::REALGetArrayUBound,
                                [](host::Array*) { return std::int64_t{calls++ == 0 ? 1234 : 5}; });
  const TestArray<tests::element::Int32> numbers({1});
  EXPECT_EQ(zkt::GetArrayBasePointer(numbers.Get()), nullptr);
  ExpectRaised("OutOfBoundsException", "The parameter index  is too big. Range is 0 to 5, but value is 9.");
}

// The first thread verifies the layout. The other threads wait for the result.
TEST_F(ArrayAccessTest, IsVerifiedOnceByManyThreads) {
  for (const bool fails : {false, true}) {
    static bool isCorrupted;
    isCorrupted = fails;
    Restart(2024.03, [](host::Array* array) {
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
      if (isCorrupted) CorruptDimensions(array);
    });
    const TestArray<tests::element::Int32> numbers({1, 2});
    std::atomic<int> pointers{0};
    {
      std::barrier begin(4);
      std::vector<std::jthread> threads;
      for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
          begin.arrive_and_wait();
          pointers += zkt::GetArrayBasePointer(numbers.Get()) != nullptr;
        });
    }
    EXPECT_EQ(pointers, fails ? 0 : 4);
    EXPECT_EQ(gCreations, 1);
  }
}

// If a host exception interrupts the check, the next thread repeats it, even if that thread was waiting for the result.
TEST_F(ArrayAccessTest, IsVerifiedAgainAfterAHostException) {
  const TestArray<tests::element::Int32> numbers({1, 2});
  for (const bool isWaiting : {false, true}) {
    static std::atomic<int> calls;
    calls = 0;
    Restart(2024.03, [](host::Array* array) {
      if (calls++ != 0) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
      host::Release(array);
      throw std::runtime_error("host");
    });
    std::jthread waiting;
    const auto use = [&] { EXPECT_NE(zkt::GetArrayBasePointer(numbers.Get()), nullptr); };
    if (isWaiting)
      waiting = std::jthread([&] {
        while (calls == 0) std::this_thread::yield();
        use();
      });
    EXPECT_THROW(zkt::GetArrayBasePointer(numbers.Get()), std::runtime_error);
    use();
    waiting = {};
    EXPECT_EQ(gCreations, 2);
  }
}

TEST_F(ArrayAccessTest, IsNotProvenWhileTheSameThreadVerifies) {
  static const void* duringCheck;
  duringCheck = &duringCheck;
  gCorrupt = [](host::Array* array) {
    duringCheck = zkt::GetArrayBasePointer(reinterpret_cast<_REALarrayInt64*>(array));
  };
  const TestArray<tests::element::Int64> numbers({1, 2});
  EXPECT_NE(zkt::GetArrayBasePointer(numbers.Get()), nullptr);
  EXPECT_EQ(duringCheck, nullptr);
}

TEST_F(ArrayAccessTest, ReadsStringsDirectlyOrThroughTheHost) {
  const host::StringRef last = MakeString("last");
  const TestArray<tests::element::String> strings({nullptr, last.Get()});
  const auto read = [&](std::int64_t index) {
    const host::StringRef element(zkt::REALGetArrayString(strings.Get(), index));
    EXPECT_EQ(last->referenceCount, element.Get() == last.Get() ? 3 : 2) << "the caller owns one reference";
    return element.Get();
  };
  Restart(2024.03, CorruptDimensions);
  EXPECT_EQ(read(1), last.Get());
  EXPECT_EQ(read(0), nullptr);
  EXPECT_EQ(gCreations, 1) << "reading a string also verifies the layout";
  const ServiceWithheld slowReader(zkt::REALReadArrayString);
  EXPECT_EQ(read(1), nullptr);
  Restart(2024.03, nullptr);
  EXPECT_EQ(read(1), last.Get()) << "directly";
  const ServiceReplaced lock(zkt::REALLockString, [](void*) { ADD_FAILURE() << "nil was locked"; });
  EXPECT_EQ(read(0), nullptr);
  ExpectNothingRaised();
}

TEST_F(ArrayAccessTest, ChecksTheIndexOfAString) {
  const host::StringRef text = MakeString("text");
  const TestArray<tests::element::String> strings({text.Get(), text.Get(), text.Get()}), none({});
  const auto expect = [&](const TestArray<tests::element::String>& array, std::int64_t index, const char* words) {
    EXPECT_EQ(zkt::REALGetArrayString(array.Get(), index), nullptr);
    ExpectRaised("OutOfBoundsException", ("The parameter index  is too " + std::string(words)).c_str());
  };
  expect(strings, 3, "big. Range is 0 to 2, but value is 3.");
  expect(strings, -1, "small. Range is 0 to 2, but value is -1.");
  expect(strings, INT64_MAX, "big. Range is 0 to 2, but value is 9223372036854775807.");
  expect(strings, INT64_MIN, "small. Range is 0 to 2, but value is -9223372036854775808.");
  expect(none, 0, "big. Range is 0 to -1, but value is 0.");
  EXPECT_EQ(zkt::gArrayAccess.load(), ArrayAccess::kNotVerified) << "nothing was read";
  ASSERT_NE(zkt::GetArrayBasePointer(strings.Get()), nullptr);
  const ServiceWithheld absent(zkt::REALGetArrayUBound);
  expect(strings, 1, "big. Range is 0 to 0, but value is 1.");
  EXPECT_EQ(host::StringRef(zkt::REALGetArrayString(strings.Get(), 0)).Get(), text.Get());
}

TEST_F(ArrayAccessTest, LocksAndUnlocksRuns) {
  static std::string calls;
  static char places[2];
  static const auto note = [](const char* call, const void* place) {
    calls += call + std::string(place == nullptr ? "nil" : place == &places[0] ? "first" : "last");
  };
  const ServiceReplaced lock(zkt::REALLockObject, [](void* p) { note(" lock object ", p); });
  const ServiceReplaced unlock(zkt::REALUnlockObject, [](void* p) { note(" unlock object ", p); });
  const ServiceReplaced lockString(zkt::REALLockString, [](void* p) { note(" lock string ", p); });
  const ServiceReplaced unlockString(zkt::REALUnlockString, [](void* p) { note(" unlock string ", p); });
  const auto check = [&](auto* item, const std::string& kind) {
    using Item = decltype(item);
    const Item items[] = {reinterpret_cast<Item>(&places[0]), nullptr, reinterpret_cast<Item>(&places[1])};
    for (const std::string word : {"lock ", "unlock "}) {
      calls.clear();
      const auto run = [&] { word == "lock " ? zkt::LockObjects(items, 3) : zkt::UnlockObjects(items, 3); };
      EXPECT_EQ(tests::TraceOf(run), word + kind + "s 3|");
      const std::string call = " " + word + kind + " ";
      EXPECT_EQ(calls, call + "first" + call + "nil" + call + "last");
    }
  };
  check(REALstring{}, "string");
  check(REALobject{}, "object");
  check(REALdate{}, "object");
  check(REALdateTime{}, "object");
}

}  // namespace
