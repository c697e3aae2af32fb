#include "arrays/array_access.h"

#include <atomic>
#include <thread>

#include "frame/contract/host_reference.h"
#include "frame/contract/plugin_state.h"
#include "runtime/debug_log.h"
#include "runtime/exceptions.h"
#include "runtime/jump_cleanup.h"

namespace zkt {

namespace {

struct HostArraySince2021 : HostArray {
  std::int64_t dimensionCount;
  std::uint32_t notRead32[3];
  std::int32_t upperBound;
};
static_assert(sizeof(HostArraySince2021) == 88);

struct HostArrayBefore2021 : HostArray {
  std::int32_t dimensionCount;
  std::uint32_t notRead32[2];
  std::int32_t upperBound;
};
static_assert(sizeof(HostArrayBefore2021) == 80);

constexpr std::int64_t kTestUpperBound = 1234;

// The thread that is running the layout test. It must not wait for itself.
std::atomic<std::thread::id> gTestingThread;

void EndTest(ArrayAccess outcome) {
  gTestingThread.store({});
  gArrayAccess.store(outcome);
}

// If the host leaves the test with a jump or an exception, the test counts as not run. The next call repeats it, and no
// thread waits for it forever.
constinit JumpCleanup gLeftByJump{[](JumpCleanup*) { EndTest(ArrayAccess::kNotVerified); }};

class TestInProgress {
 public:
  TestInProgress() {
    gTestingThread.store(std::this_thread::get_id());
    gLeftByJump.Enter();
  }
  TestInProgress(const TestInProgress&) = delete;
  TestInProgress& operator=(const TestInProgress&) = delete;
  ~TestInProgress() {
    gLeftByJump.Leave();
    EndTest(outcome);
  }

  ArrayAccess outcome = ArrayAccess::kNotVerified;
};

void WriteElement(_REALarrayInteger* array, std::int64_t index, std::int64_t value) {
  const std::int64_t upperBound = REALGetArrayUBound(array);
  if (index < 0 || index > upperBound)
    RaiseOutOfBoundsException(index, upperBound + 1);
  else
    REALSetArrayValueInteger(array, value, index);
}

// Returns whether the value is as expected. If not, logs the complaint and the value.
bool Expect(const char* complaint, std::int64_t value, std::int64_t expected) {
  if (value != expected) Trace(complaint, value);
  return value == expected;
}

template <class Layout>
bool HasLayout(const _REALarrayInteger* array) {
  const auto& layout = *reinterpret_cast<const Layout*>(array);
  return Expect("refCount wrong", layout.referenceCount, 1) &&
         Expect("DimensionCount wrong", layout.dimensionCount, 1) &&
         Expect("ubound wrong", layout.upperBound, kTestUpperBound);
}

// Returns whether values that the host writes appear where the plug-in reads them. `array` must have been created with
// the upper bound kTestUpperBound.
bool VerifyArray(_REALarrayInteger* array) {
  constexpr std::int64_t kFirst = 12345;
  constexpr std::int64_t kTenth = 123456;
  if (array == nullptr) {
    Trace("Failed to allocate array");
    return false;
  }
  if (!Expect("ubound failed", REALGetArrayUBound(array), kTestUpperBound)) return false;
  WriteElement(array, 0, kFirst);
  WriteElement(array, 9, kTenth);
  if (!Expect("Index 0 failed", REALGetArrayValueInteger(array, 0), kFirst) ||
      !Expect("Index 1 failed", REALGetArrayValueInteger(array, 1), 0) ||
      !Expect("Index 9 failed", REALGetArrayValueInteger(array, 9), kTenth))
    return false;
  const bool hasLayout =
      rbversion >= 2021.0 ? HasLayout<HostArraySince2021>(array) : HasLayout<HostArrayBefore2021>(array);
  if (!hasLayout) return false;
  const auto* const data = static_cast<const std::int64_t*>(reinterpret_cast<const HostArray*>(array)->data);
  if (data == nullptr) {
    Trace("data is nil");
    return false;
  }
  return Expect("Index 0 failed", data[0], kFirst) && Expect("Index 9 failed", data[9], kTenth);
}

bool RunTest() {
  Trace("TestArray", rbversion);
  const OwnedObject array(REALCreateArray(kArrayOfInteger, kTestUpperBound));
  return VerifyArray(reinterpret_cast<_REALarrayInteger*>(array.Get()));
}

template <class Reference>
void ForEach(const char* label, auto& service, Reference const* items, std::int64_t count) {
  Trace(label, count);
  std::int64_t i = 0;
  do {
    service(items[i]);
  } while (++i < count);
}

// The host treats dates as objects.
template <class Date>
REALobject const* AsObjects(Date const* dates) {
  return reinterpret_cast<REALobject const*>(dates);
}

}  // namespace

bool VerifyArrayLayout() {
  if (gTestingThread.load() == std::this_thread::get_id()) return false;
  for (;;) {
    ArrayAccess state = ArrayAccess::kNotVerified;
    if (gArrayAccess.compare_exchange_strong(state, ArrayAccess::kVerifying)) {
      TestInProgress test;
      test.outcome = RunTest() ? ArrayAccess::kProven : ArrayAccess::kFailed;
    } else if (state == ArrayAccess::kVerifying) {
      std::this_thread::yield();
    } else {
      return state == ArrayAccess::kProven;
    }
  }
}

REALstring REALGetArrayString(_REALarrayString* array, std::int64_t index) {
  const std::int64_t upperBound = REALGetArrayUBound(array);
  if (index < 0 || index > upperBound) {
    RaiseOutOfBoundsException(index, upperBound + 1);
    return nullptr;
  }
  const REALstring* const strings = GetArrayBasePointer(array);
  if (strings == nullptr) return REALReadArrayString(array, index);
  if (strings[index] != nullptr) REALLockString(strings[index]);
  return strings[index];
}

void LockObjects(REALstring const* items, std::int64_t count) { ForEach("lock strings", REALLockString, items, count); }
void LockObjects(REALobject const* items, std::int64_t count) { ForEach("lock objects", REALLockObject, items, count); }
void LockObjects(REALdate const* items, std::int64_t count) { LockObjects(AsObjects(items), count); }
void LockObjects(REALdateTime const* items, std::int64_t count) { LockObjects(AsObjects(items), count); }

void UnlockObjects(REALstring const* items, std::int64_t count) {
  ForEach("unlock strings", REALUnlockString, items, count);
}
void UnlockObjects(REALobject const* items, std::int64_t count) {
  ForEach("unlock objects", REALUnlockObject, items, count);
}
void UnlockObjects(REALdate const* items, std::int64_t count) { UnlockObjects(AsObjects(items), count); }
void UnlockObjects(REALdateTime const* items, std::int64_t count) { UnlockObjects(AsObjects(items), count); }

}  // namespace zkt
