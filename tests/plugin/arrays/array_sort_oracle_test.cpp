// Tests the result of sorting in natural order, whatever the algorithm. Elements are picked by rank, so counting the
// ranks yields the sorted array.
#include <algorithm>

#include "plugin/arrays/sort_oracle.h"

namespace {

using tests::BitsOf;

constexpr std::uint64_t kRankOfNaN = UINT64_MAX;

// Computes the rank of a number from its bits alone. Both zeros have the same rank, and all NaNs have the highest rank.
template <class T>
std::uint64_t RankOf(typename T::Stored number) {
  using Stored = typename T::Stored;
  constexpr std::uint64_t kSign = std::uint64_t{1} << (8 * sizeof(Stored) - 1);
  const std::uint64_t bits = BitsOf(number), magnitude = bits & (kSign - 1);
  if constexpr (std::is_floating_point_v<Stored>) {
    if (magnitude > BitsOf(std::numeric_limits<Stored>::infinity())) return kRankOfNaN;
    return (bits & kSign) != 0 ? kSign - magnitude : kSign + magnitude;
  }
  return std::is_signed_v<typename T::Value> ? bits ^ kSign : bits;
}

template <class T>
class NaturalSort : public tests::SortOracleTest<T> {
 protected:
  using typename tests::SortOracleTest<T>::Stored;
  using typename tests::SortOracleTest<T>::Elements;
  using tests::SortOracleTest<T>::random_;

  static bool IsNaN(Stored element) {
    if constexpr (std::is_floating_point_v<Stored>) return RankOf<T>(element) == kRankOfNaN;
    return false;
  }

  // Orders strings by the host's comparison, and dates by their total seconds.
  static bool Precedes(Stored a, Stored b) {
    if constexpr (T::kIsReference)
      return T::Less(a, b);
    else
      return RankOf<T>(a) < RankOf<T>(b);
  }

  // Returns sorted elements. A quarter of the floating-point palettes have no NaNs, and another quarter have almost
  // only NaNs.
  Elements MakePalette(std::size_t size, unsigned specialPercent) {
    Elements palette(size);
    std::generate(palette.begin(), palette.end(), [&] { return this->Pick(specialPercent); });
    const auto kind = random_() % 4;
    if (kind == 0) std::replace_if(palette.begin(), palette.end(), IsNaN, Stored{});
    if (kind == 1 && std::is_floating_point_v<Stored>)
      for (Stored& element : palette)
        while (!IsNaN(element) && random_() % 32 != 0) element = this->Pick();
    std::stable_sort(palette.begin(), palette.end(), Precedes);
    return palette;
  }

  static Elements SortByRanks(const tests::Ranks& ranks, const Elements& palette, bool descending) {
    std::vector<std::size_t> counts(palette.size());
    for (const std::size_t rank : ranks) ++counts[rank];
    Elements sorted;
    for (std::size_t rank = 0; rank < palette.size(); ++rank) sorted.insert(sorted.end(), counts[rank], palette[rank]);
    if (descending) std::reverse(sorted.begin(), std::find_if(sorted.begin(), sorted.end(), IsNaN));
    return sorted;
  }

  // Sorts elements of equal rank by their bits. The plug-in may return them in any order, so arrays cannot be compared
  // directly.
  static Elements InCanonicalOrder(Elements elements) {
    if constexpr (std::is_integral_v<Stored>) return elements;
    for (auto first = elements.begin(); first != elements.end();) {
      const auto hasOtherRank = [&](Stored element) { return Precedes(*first, element) || Precedes(element, *first); };
      const auto last = std::find_if(first, elements.end(), hasOtherRank);
      std::sort(first, last, [](Stored a, Stored b) { return BitsOf(a) < BitsOf(b); });
      first = last;
    }
    return elements;
  }
};
TYPED_TEST_SUITE(NaturalSort, tests::element::EverySort, tests::element::Name);

TYPED_TEST(NaturalSort, IsCorrectForEveryShape) {
  for (const std::size_t size : tests::SortSizes(TypeParam::kIsReference ? 1025 : 300'000)) {
    const decltype(this->MakePalette(0, 0)) palettes[] = {this->MakePalette(size, 0), this->MakePalette(size, 30)};
    for (const tests::SortShape& shape : tests::kSortShapes) {
      const auto& palette = palettes[this->random_() % std::size(palettes)];
      const tests::Ranks ranks = size > 0 ? shape.make(size, this->random_) : tests::Ranks();
      const auto elements = this->PickBy(ranks, palette);
      for (const bool descending : {false, true}) {
        const tests::TestArray<TypeParam> array(elements, 3);
        TypeParam::kSort(array.Get(), REALboolean{descending});
        ASSERT_TRUE(tests::SameBits(this->InCanonicalOrder(array.Elements()),
                                    this->InCanonicalOrder(this->SortByRanks(ranks, palette, descending))))
            << this->Note(shape.name, size, descending);
        if (size < 100) this->ExpectReferencesIn(array);
      }
    }
  }
  this->ExpectNothingRaised();
}

}  // namespace
