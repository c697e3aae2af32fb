// Hard-to-sort elements of every type, for tests that compare sorted arrays with an oracle.
#pragma once

#include <string>
#include <vector>

#include "plugin/arrays/array_fixture.h"
#include "plugin/arrays/sort_shapes.h"

namespace tests {

// Returns all small sizes, sizes around powers of two (where the algorithm may change), and sizes with no special
// property. With a sanitizer, the large sizes would take minutes. Only one of them is used with the address sanitizer,
// and none is used with the thread sanitizer.
inline std::vector<std::size_t> SortSizes(std::size_t largest) {
  std::vector<std::size_t> sizes(71);
  std::iota(sizes.begin(), sizes.end(), 0);
  for (std::size_t power = 128; power <= 4096; power *= 2) sizes.insert(sizes.end(), {power - 1, power, power + 1});
  sizes.insert(sizes.end(), {130, 1000, 10'007, 65'535, 65'536, 65'537, 300'000});
#if defined(__SANITIZE_ADDRESS__)
  std::erase_if(sizes, [](std::size_t size) { return size > 1025 && size != 10'007; });
#elif defined(__SANITIZE_THREAD__)
  std::erase_if(sizes, [](std::size_t size) { return size > 1025; });
#endif
  std::erase_if(sizes, [largest](std::size_t size) { return size > largest; });
  return sizes;
}

template <class Stored>
std::uint64_t BitsOf(Stored element) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &element, sizeof element);
  return bits;
}

template <class T>
class SortOracleTest : public ArrayTest<T> {
 protected:
  using Stored = typename T::Stored;
  using Elements = std::vector<Stored>;
  using ArrayTest<T>::pool_;
  using ArrayTest<T>::random_;

  static constexpr std::uint64_t kSeed = 20261121;

  SortOracleTest() {
    random_.seed(kSeed);
    if constexpr (T::kIsReference)
      for (int i = 0; i < 200; ++i) {
        const std::uint64_t number = random_() % 300;
        if constexpr (std::is_same_v<T, element::String>) {
          pool_.emplace_back(host::MakeString(std::to_string(number)));
        } else {
          auto* const object = host::MakeObject(static_cast<REALobjectStruct*>(pool_[0].Get())->type);
          pool_.emplace_back(object);
          for (const char* const property : {"TotalSeconds", "SecondsFrom1970"})
            if (host::Value* const seconds = host::FindProperty(object, property))
              seconds->payload = static_cast<double>(number) / 4 - 30;
        }
      }
  }

  // With a probability of `specialPercent` percent, returns a special number: a limit of the type, a zero, an infinity,
  // a denormal number, or a quiet or signaling NaN of either sign with one of several payloads. Never returns the guard
  // value.
  Stored Pick(unsigned specialPercent = 30) {
    if constexpr (T::kIsReference) {
      return this->Any(Choice::kAll);
    } else {
      constexpr std::uint64_t kSign = std::uint64_t{1} << (8 * sizeof(Stored) - 1);
      const std::uint64_t infinity = BitsOf(std::numeric_limits<Stored>::infinity());
      const std::uint64_t quiet = BitsOf(std::numeric_limits<Stored>::quiet_NaN());
      const std::uint64_t nearby = random_() % 3;
      const std::uint64_t special[] = {nearby,        kSign - 1, infinity, infinity - 1, infinity + 1 + nearby,
                                       quiet + nearby};
      const std::uint64_t bits =
          random_() % 100 < specialPercent ? special[random_() % std::size(special)] ^ (random_() & kSign) : random_();
      Stored element;
      std::memcpy(&element, &bits, sizeof element);
      return BitsOf(element) == BitsOf(GuardOf<Stored>()) ? Stored{} : element;
    }
  }

  static Elements PickBy(const Ranks& ranks, const Elements& palette) {
    Elements elements;
    elements.reserve(ranks.size());
    for (const std::size_t rank : ranks) elements.push_back(palette[rank]);
    return elements;
  }

  static std::string Note(const std::string& what, std::size_t size, bool descending) {
    return what + ", " + std::to_string(size) + (descending ? " elements descending" : " elements ascending") +
           ", seed " + std::to_string(kSeed);
  }
};

}  // namespace tests
