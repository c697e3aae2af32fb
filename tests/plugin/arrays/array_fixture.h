// Shared by the tests of all array families: random elements, host arrays between guard elements, and checks of
// reference counts.
#pragma once

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "arrays/array_access.h"
#include "plugin/arrays/element_types.h"

namespace tests {

using Random = std::mt19937_64;

// The elements to generate. kFew: only a few distinct values. kOrdinary: all magnitudes, but no nil, NaN, or infinity.
// kAll: any value.
enum class Choice { kFew, kOrdinary, kAll };

inline constexpr int kGuardByte = 0xA5;

template <class Stored>
Stored GuardOf() {
  Stored guard;
  std::memset(&guard, kGuardByte, sizeof guard);
  return guard;
}

template <class Stored>
bool SameBits(const std::vector<Stored>& a, const std::vector<Stored>& b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Stored)) == 0);
}

template <class Stored>
bool IsPermutation(std::vector<Stored> a, std::vector<Stored> b) {
  const auto less = [](const Stored& x, const Stored& y) { return std::memcmp(&x, &y, sizeof x) < 0; };
  std::sort(a.begin(), a.end(), less);
  std::sort(b.begin(), b.end(), less);
  return SameBits(a, b);
}

// A host array that holds its own references. With guards, its elements are in the middle of a larger block whose other
// bytes must not change. An array with guards must not grow.
template <class T>
class TestArray {
 public:
  using Stored = typename T::Stored;

  explicit TestArray(const std::vector<Stored>& elements, std::int64_t guards = 0) : guards_(guards) {
    const host::TypeKind kind = host::FindTypeKind(T::kName);
    const auto count = static_cast<std::int64_t>(elements.size());
    array_ = host::ArrayRef(host::MakeArray(
        {kind == host::TypeKind::kNothing ? host::TypeKind::kObject : kind, false, T::kName}, count + 2 * guards - 1));
    if (guards > 0) {
      std::memset(array_->elements, kGuardByte, static_cast<std::size_t>(array_->capacity) * sizeof(Stored));
      array_->data += static_cast<std::size_t>(guards) * sizeof(Stored);
      array_->count = count;
    }
    if (count > 0) std::memcpy(array_->data, elements.data(), elements.size() * sizeof(Stored));
    if constexpr (T::kIsReference)
      for (Stored element : elements) host::Retain(element);
  }
  TestArray(const TestArray&) = delete;
  TestArray& operator=(const TestArray&) = delete;
  ~TestArray() {
    if (guards_ == 0) return;
    if constexpr (T::kIsReference)
      for (Stored element : Elements()) host::Release(element);
    const std::vector<Stored> guard(static_cast<std::size_t>(guards_), GuardOf<Stored>());
    const auto* const block = reinterpret_cast<const Stored*>(array_->elements);
    const auto* const after = block + guards_ + std::exchange(array_->count, 0);
    EXPECT_TRUE(SameBits({block, block + guards_}, guard)) << "written before the start of the array";
    EXPECT_TRUE(SameBits({after, after + guards_}, guard)) << "written past the end of the array";
  }

  typename T::Array* Get() const { return reinterpret_cast<typename T::Array*>(array_.Get()); }
  std::vector<Stored> Elements() const {
    const auto* const first = reinterpret_cast<const Stored*>(array_->data);
    return {first, first + array_->count};
  }

 private:
  host::ArrayRef array_;
  std::int64_t guards_;
};

// Makes the plug-in verify direct access to arrays before each test.
class ArrayHostTest : public HostTest {
 protected:
  ArrayHostTest() {
    zkt::gArrayAccess = zkt::ArrayAccess::kNotVerified;
    const TestArray<element::Int64> any({1});
    EXPECT_NE(zkt::GetArrayBasePointer(any.Get()), nullptr);
  }

  // A null message means that no exception is expected.
  static void ExpectRaised(const char* className, const char* message, const std::string& note = "") {
    const auto raised = TakeRaised();
    EXPECT_EQ(raised ? raised->className + ": " + raised->message : "",
              message != nullptr ? className + (": " + std::string(message)) : "")
        << note;
    EXPECT_EQ(raised ? raised->errorNumber : 0, 0) << note;
  }
  static void ExpectNothingRaised(const std::string& note = "") { ExpectRaised("", nullptr, note); }
  static void ExpectNoAccess(const std::string& note = "") {
    ExpectRaised("UnsupportedOperationException", "Failed to access array?", note);
  }
};

template <class T>
class ArrayTest : public ArrayHostTest {
 protected:
  using Stored = typename T::Stored;
  using Elements = std::vector<Stored>;

  ArrayTest() {
    if constexpr (std::is_same_v<T, element::String>) {
      for (const char* const text : {"a", "b", "A", "ab", "b", "é", "zebra", "10", "9", "_"})
        pool_.emplace_back(host::MakeString(text));
    } else if constexpr (T::kIsReference) {
      for (const double seconds : {0.0, 1.5, -1e9, 1e9, 1e9 + 1e-6, 1.5, -0.0, 4e9, 3.0, 2.0}) {
        const bool isDate = std::is_base_of_v<element::Dated, T>;
        auto* const object = host::MakeObject(host::FindClass(isDate ? T::kName : "RuntimeException"));
        pool_.emplace_back(object);
        for (const char* const property : {"TotalSeconds", "SecondsFrom1970"})
          if (host::Value* const value = host::FindProperty(object, property)) value->payload = seconds;
      }
    }
  }

  // Never returns the guard value.
  Stored Any(Choice choice) {
    if constexpr (T::kIsReference) {
      const std::size_t count = choice == Choice::kFew ? 3 : pool_.size() + (choice == Choice::kAll ? 1 : 0);
      const std::size_t index = random_() % count;
      return index < pool_.size() ? pool_[index].Get() : nullptr;
    } else {
      using Limits = std::numeric_limits<Stored>;
      if (choice == Choice::kFew) return static_cast<Stored>(random_() % 3);
      if constexpr (Limits::is_integer) {
        constexpr Stored kSpecial[] = {Limits::min(), Limits::max(), 0, static_cast<Stored>(-1),
                                       static_cast<Stored>(Limits::max() / 2 + 1)};
        const auto any =
            random_() % 4 == 0 ? kSpecial[random_() % std::size(kSpecial)] : static_cast<Stored>(random_());
        return any == GuardOf<Stored>() ? Stored{} : any;
      } else {
        constexpr Stored kSpecial[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max()};
        if (choice == Choice::kAll && random_() % 8 == 0) return kSpecial[random_() % std::size(kSpecial)];
        if (random_() % 16 == 0) return random_() % 2 == 0 ? Stored{-0.0} : Limits::denorm_min();
        const auto fraction = static_cast<double>(static_cast<std::int64_t>(random_())) * 0x1p-63;
        return static_cast<Stored>(std::ldexp(fraction, static_cast<int>(random_() % 64) - 32));
      }
    }
  }

  Elements Make(std::size_t count, Choice choice = Choice::kAll) {
    Elements elements(count);
    std::generate(elements.begin(), elements.end(), [&] { return Any(choice); });
    return elements;
  }

  // A range of elements within an array.
  struct Part {
    std::size_t first, count;
    std::int64_t Index() const { return static_cast<std::int64_t>(first); }
    std::int64_t Count() const { return static_cast<std::int64_t>(count); }
  };
  Part AnyPart(std::size_t size) {
    const std::size_t first = size > 0 ? random_() % size : 0;
    return {first, size > 0 ? 1 + random_() % (size - first) : 0};
  }

  // Expects the pool and the elements of these arrays to hold all references to the pool's values.
  template <class... Arrays>
  void ExpectReferencesIn(const Arrays&... arrays) {
    if constexpr (T::kIsReference)
      for (const auto& value : pool_) {
        const auto in = [&](const Elements& all) { return std::count(all.begin(), all.end(), value.Get()); };
        EXPECT_EQ(value->referenceCount, (1 + ... + in(arrays.Elements())));
      }
  }

  std::vector<host::Ref<host::RefCounted>> pool_;
  Random random_{20240317};
};

// Array sizes near the numbers of elements that fill a register, an unrolled loop iteration, or a byte accumulator.
inline constexpr std::size_t kSizes[] = {0,  1,  2,   3,   7,   8,   9,   15,  16,  17,    31,    32,    33,    63,
                                         64, 65, 127, 128, 129, 255, 256, 257, 500, 16319, 16320, 16321, 65536, 81617};

}  // namespace tests
