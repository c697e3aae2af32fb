// Compares the array functions, except the sorts, with plain loops.
#include "plugin/arrays/range_test.h"

namespace {

using tests::Choice;
using tests::TestArray;

// Integer sums wrap around. Floating-point numbers are added in order, starting from +0.0.
template <class T>
auto PlainSum(std::span<const typename T::Stored> elements) {
  std::conditional_t<std::is_floating_point_v<typename T::Stored>, double, std::uint64_t> sum = 0;
  for (const auto element : elements) sum += static_cast<decltype(sum)>(static_cast<typename T::Value>(element));
  return sum;
}

template <class T>
using ArraySum = tests::RangeTest<T>;
TYPED_TEST_SUITE(ArraySum, tests::element::EverySum, tests::element::Name);

TYPED_TEST(ArraySum, EqualsThePlainLoop) {
  using Limits = std::numeric_limits<typename TestFixture::Stored>;
  for (const bool check : {false, true}) {
    const auto sum = [=](typename TypeParam::Array* array, std::int64_t index, std::int64_t count) {
      return tests::Sum<TypeParam>(array, index, count, check);
    };
    this->ExpectPlainLoop("SumArrayZKT", sum, PlainSum<TypeParam>);
    for (const auto value :
         {Limits::lowest(), Limits::max(), static_cast<decltype(Limits::max())>(Limits::max() / 2 + 1),
          static_cast<decltype(Limits::max())>(-0.0)})
      for (const std::size_t size : tests::kSizes)
        this->ExpectPlainLoopOver(typename TestFixture::Elements(size, value), sum, PlainSum<TypeParam>);
  }
}

template <class T>
using ArrayCount = tests::RangeTest<T>;
TYPED_TEST_SUITE(ArrayCount, tests::element::EveryCount, tests::element::Name);

TYPED_TEST(ArrayCount, EqualsThePlainLoop) {
  typename TypeParam::Stored value{};
  const auto count = [&](typename TypeParam::Array* array, std::int64_t index, std::int64_t elements) {
    return TypeParam::kCount(array, (typename TypeParam::Argument)(value), index, elements);
  };
  const auto plain = [&](std::span<const typename TypeParam::Stored> range) {
    return std::count_if(range.begin(), range.end(), [&](auto element) { return TypeParam::Equal(element, value); });
  };
  for (const std::size_t size : tests::kSizes) {
    if (TypeParam::kIsReference && size > 300) break;
    for (const Choice choice : {Choice::kFew, Choice::kAll}) {
      auto elements = this->Make(size, choice);
      if (choice == Choice::kFew && size > 1000) std::fill(elements.begin() + 5, elements.end(), elements[0]);
      for (const bool isInTheArray : {false, true}) {
        value = isInTheArray && size > 0 ? elements[this->random_() % size] : this->Any(choice);
        this->ExpectPlainLoopOver(elements, count, plain);
      }
    }
  }
  value = this->Any(Choice::kFew);
  this->ExpectArgumentChecks(count, plain);
}

using ArrayOfStrings = tests::ArrayTest<tests::element::String>;

TEST_F(ArrayOfStrings, IsCountedWithTheHostsComparison) {
  static std::vector<std::pair<void*, void*>> asked;
  asked.clear();
  const TestArray<tests::element::String> array({pool_[0].Get(), nullptr, pool_[0].Get()});
  auto* const value = static_cast<REALstring>(pool_[0].Get());
  {
    const tests::ServiceReplaced differs(zkt::REALCompareStrings, [](void* a, void* b) {
      asked.emplace_back(a, b);
      return asked.size() == 2 ? 0 : 1;
    });
    EXPECT_EQ(zkt::CountValueZKT_String(array.Get(), value, 0, -2), 1)
        << "the host decides, even about identical strings";
    EXPECT_EQ(asked, (decltype(asked){{value, value}, {nullptr, value}, {value, value}}))
        << "the element is the first argument";
    EXPECT_TRUE(zkt::EqualsArrayZKT_String(array.Get(), array.Get(), 0, -2, 0)) << "identical strings are equal";
  }
  const tests::ServiceWithheld absent(zkt::REALCompareStrings);
  EXPECT_EQ(zkt::CountValueZKT_String(array.Get(), value, 0, -2), 0);
}

template <class T>
class ArrayEquals : public tests::ArrayTest<T> {
 protected:
  using Elements = std::vector<typename T::Stored>;

  typename T::Stored Other(typename T::Stored value) {
    auto other = value;
    while (T::Equal(other, value)) {
      if constexpr (T::kIsReference)
        other = this->Any(Choice::kOrdinary);
      else  // flips one bit
        reinterpret_cast<unsigned char*>(&other)[this->random_() % sizeof other] ^=
            static_cast<unsigned char>(1u << this->random_() % 8);
    }
    return other;
  }
};
TYPED_TEST_SUITE(ArrayEquals, tests::element::EveryEquals, tests::element::Name);

TYPED_TEST(ArrayEquals, FindsTheFirstDifferenceAtAnyIndex) {
  for (const std::size_t size : tests::kSizes) {
    if (TypeParam::kIsReference && size > 300) break;
    const auto elements = this->Make(size, Choice::kOrdinary);
    const TestArray<TypeParam> array(elements, 3), same(elements);
    EXPECT_EQ(TypeParam::kEquals(array.Get(), same.Get(), 0, -2, 0), size > 0) << size;
    for (std::size_t at = 0; at < size; at += size <= 65 ? 1 : size / 41 + this->random_() % 3) {
      auto changed = elements;
      for (const std::size_t place : {at, at + this->random_() % (size - at)})
        changed[place] = this->Other(elements[place]);
      const TestArray<TypeParam> other(changed, 3);
      const auto index = static_cast<std::int64_t>(at);
      const std::string trace = tests::TraceOf(
          [&] { EXPECT_FALSE(TypeParam::kEquals(array.Get(), other.Get(), 0, -2, 0)) << size << " at " << at; });
      EXPECT_NE(trace.find(" at " + std::to_string(at) + "|values "), std::string::npos) << size << " at " << at;
      EXPECT_EQ(TypeParam::kEquals(array.Get(), other.Get(), 0, index, 0), at > 0) << size << " before " << at;
      EXPECT_FALSE(TypeParam::kEquals(array.Get(), other.Get(), index, 1, index)) << size << " only " << at;
    }
  }
  this->ExpectNothingRaised();
}

TYPED_TEST(ArrayEquals, ComparesAllValuesAtAllOffsets) {
  for (int round = 0; round < 1000; ++round) {
    const std::size_t size = 1 + this->random_() % 40;
    const auto a = this->Make(size, round % 2 == 0 ? Choice::kFew : Choice::kAll);
    auto b = a;
    std::rotate(b.begin(), b.begin() + static_cast<std::ptrdiff_t>(this->random_() % size), b.end());
    const TestArray<TypeParam> array(a, 3), other(b, 1);
    const auto i = this->AnyPart(size), j = this->AnyPart(size);
    const std::size_t count = std::min(i.count, j.count);
    EXPECT_EQ(TypeParam::kEquals(array.Get(), other.Get(), i.Index(), static_cast<std::int64_t>(count), j.Index()) != 0,
              std::equal(a.data() + i.first, a.data() + i.first + count, b.data() + j.first, TypeParam::Equal))
        << size << ' ' << i.first << ' ' << count << ' ' << j.first;
  }
  if constexpr (std::is_floating_point_v<typename TestFixture::Stored>) {
    const TestArray<TypeParam> nan({1, NAN}), zero({0, -0.0F}), otherZero({-0.0F, 0});
    EXPECT_FALSE(TypeParam::kEquals(nan.Get(), nan.Get(), 0, -2, 0));
    EXPECT_TRUE(TypeParam::kEquals(zero.Get(), otherZero.Get(), 0, -2, 0));
  }
}

template <class T>
class ArrayReverseAddCopy : public tests::ArrayTest<T> {
 protected:
  using Elements = std::vector<typename T::Stored>;

  // Returns `first` with the elements of `second` appended.
  static Elements Appended(Elements first, const Elements& second) {
    for (auto element : second) {
      if constexpr (std::is_same_v<T, tests::element::Boolean>) element = element != 0;
      first.push_back(element);
    }
    return first;
  }
};
TYPED_TEST_SUITE(ArrayReverseAddCopy, tests::element::Every, tests::element::Name);

TYPED_TEST(ArrayReverseAddCopy, ReverseInvertsTheOrder) {
  for (const std::size_t size : tests::kSizes) {
    auto elements = this->Make(size);
    const TestArray<TypeParam> array(elements, 3);
    TypeParam::kReverse(array.Get());
    std::reverse(elements.begin(), elements.end());
    EXPECT_TRUE(tests::SameBits(array.Elements(), elements)) << size;
    this->ExpectReferencesIn(array);
  }
}

TYPED_TEST(ArrayReverseAddCopy, AddAppendsAllElements) {
  for (const std::size_t size : {0u, 1u, 2u, 3u, 17u, 64u, 1000u}) {
    const auto elements = this->Make(size);
    for (const std::size_t otherSize : {0u, 1u, 5u, 300u}) {
      const auto added = this->Make(otherSize);
      const TestArray<TypeParam> array(elements), other(added, 3);
      TypeParam::kAdd(array.Get(), other.Get());
      EXPECT_TRUE(tests::SameBits(array.Elements(), this->Appended(elements, added))) << size << ' ' << otherSize;
      EXPECT_TRUE(tests::SameBits(other.Elements(), added)) << size << ' ' << otherSize;
      this->ExpectReferencesIn(array, other);
    }
    // Appends an array to itself. The array's memory moves when the array grows.
    const TestArray<TypeParam> itself(elements);
    TypeParam::kAdd(itself.Get(), itself.Get());
    EXPECT_TRUE(tests::SameBits(itself.Elements(), this->Appended(elements, elements))) << size;
    this->ExpectReferencesIn(itself);
  }
  this->ExpectNothingRaised();
}

TYPED_TEST(ArrayReverseAddCopy, CopyOverwritesTheRange) {
  for (const std::size_t size : tests::kSizes)
    for (int round = 0; round < 6 && size > 0; ++round) {
      if (TypeParam::kIsReference && size > 500) break;
      const auto source = this->Make(size);
      auto dest = this->Make(1 + this->random_() % (2 * size)), moved = source;
      const auto i = this->AnyPart(size), j = this->AnyPart(dest.size());
      const std::size_t count = std::min(i.count, j.count);
      const std::size_t place = this->random_() % (size - count + 1);
      const TestArray<TypeParam> from(source, 3), to(dest, 3), itself(source, 3);
      const std::int64_t argument = i.first + count == size ? -2 : static_cast<std::int64_t>(count);
      TypeParam::kCopy(from.Get(), to.Get(), i.Index(), argument, j.Index());
      TypeParam::kCopy(itself.Get(), itself.Get(), i.Index(), argument, static_cast<std::int64_t>(place));
      std::copy_n(source.data() + i.first, count, dest.data() + j.first);
      std::copy_n(source.data() + i.first, count, moved.data() + place);
      EXPECT_TRUE(tests::SameBits(to.Elements(), dest)) << size << ' ' << i.first << ' ' << count << ' ' << j.first;
      EXPECT_TRUE(tests::SameBits(itself.Elements(), moved)) << size << ' ' << i.first << ' ' << count << ' ' << place;
      EXPECT_TRUE(tests::SameBits(from.Elements(), source));
      this->ExpectReferencesIn(from, to, itself);
    }
  this->ExpectNothingRaised();
}

// Only the array holds references to these strings, so releasing a string before retaining it would destroy it.
TEST_F(ArrayOfStrings, KeepsElementsAliveWhenCopyingWithinTheArray) {
  const TestArray<tests::element::String> array({nullptr, nullptr, nullptr});
  for (const char c : {'x', 'y', 'z'})
    host::ElementAt<host::RefCounted*>(reinterpret_cast<host::Array*>(array.Get()), c - 'x') =
        host::MakeString({&c, 1});
  const auto copy = [&](std::int64_t from, std::int64_t count, std::int64_t to) {
    zkt::CopyArrayZKT_String(array.Get(), array.Get(), from, count, to);
    std::string all;
    for (auto* const element : array.Elements()) all += static_cast<REALstring>(element)->View();
    return all;
  };
  EXPECT_EQ(copy(0, -2, 0), "xyz");
  EXPECT_EQ(copy(0, 2, 1), "xxy");
  EXPECT_EQ(copy(1, 2, 0), "xyy");
}

using ArrayOfObjects = tests::ArrayTest<tests::element::Object>;

// A destructor runs Xojo code. That code must find only live elements in the arrays, and must not find the element that
// is being released. It may also shrink either array. The copy proceeds in blocks, and must then stop before the first
// block that does not fit in both arrays.
TEST_F(ArrayOfObjects, CopyLetsDestructorsReadAndShrinkTheArrays) {
  constexpr std::size_t kSize = 200, kCount = 150, kTwoBlocks = 128;
  constexpr std::int64_t kLeft = 10;
  static host::Array* dest;
  static host::Array* shrinks;  // null if no array shrinks
  static std::size_t releases;
  const tests::ServiceReplaced unlock(zkt::REALUnlockObject, [](REALobject released) {
    auto* const elements = reinterpret_cast<REALobject*>(dest->data);
    EXPECT_EQ(std::count(elements, elements + dest->count, released), 0);
    host::Release(released);
    if (++releases != 70 || shrinks == nullptr) return;
    auto* const cut = reinterpret_cast<REALobject*>(shrinks->data);
    for (std::int64_t i = kLeft; i < shrinks->count; ++i)
      host::Release(std::exchange(cut[i], tests::GuardOf<REALobject>()));
    shrinks->count = kLeft;
  });
  for (const char* const which : {"none", "destination", "source"}) {
    pool_.clear();
    for (std::size_t i = 0; i < 2 * kSize; ++i)
      pool_.emplace_back(host::MakeObject(host::FindClass("RuntimeException")));
    Elements source(kSize), wanted(kSize);
    for (std::size_t i = 0; i < kSize; ++i) source[i] = pool_[i].Get(), wanted[i] = pool_[kSize + i].Get();
    const TestArray<tests::element::Object> from(source, 3), to(wanted, 3);
    dest = reinterpret_cast<host::Array*>(to.Get());
    const bool isDest = which == std::string_view("destination");
    shrinks = which == std::string_view("none") ? nullptr : reinterpret_cast<host::Array*>((isDest ? to : from).Get());
    releases = 0;
    zkt::CopyArrayZKT_Object(from.Get(), to.Get(), 1, kCount, 0);
    const std::size_t copied = shrinks == nullptr ? kCount : kTwoBlocks;
    EXPECT_EQ(releases, copied) << which;
    std::copy_n(source.begin() + 1, copied, wanted.begin());
    if (isDest) wanted.resize(kLeft);
    EXPECT_TRUE(tests::SameBits(to.Elements(), wanted)) << which;
    ExpectReferencesIn(from, to);
  }
}

}  // namespace
