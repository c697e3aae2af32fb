#include "reference_loops.h"

#include <algorithm>
#include <boost/sort/pdqsort/pdqsort.hpp>
#include <cstring>
#include <functional>
#include <type_traits>

#include "arrays/vector_sort.h"

namespace reference {

template <class Result, class Element>
Result Sum(const Element* values, std::int64_t count) {
  Result sum = 0;
  for (std::int64_t i = 0; i < count; ++i) sum += static_cast<Result>(values[i]);
  return sum;
}

template <class Element>
std::int64_t Count(const Element* values, Element value, std::int64_t count) {
  std::int64_t found = 0;
  for (std::int64_t i = 0; i < count; ++i) found += values[i] == value ? 1 : 0;
  return found;
}

template <class Element>
bool Equals(const Element* a, const Element* b, std::int64_t count) {
  if constexpr (std::is_floating_point_v<Element>) {
    using Mask = std::conditional_t<sizeof(Element) == 8, std::uint64_t, std::uint32_t>;
    constexpr std::int64_t kBlock = 32;
    std::int64_t i = 0;
    for (; i + kBlock <= count; i += kBlock) {
      Mask differs = 0;
      for (std::int64_t j = 0; j < kBlock; ++j) differs |= !(a[i + j] == b[i + j]) ? Mask{1} : Mask{0};
      if (differs != 0) return false;
    }
    return std::equal(a + i, a + count, b + i);
  } else {
    return std::memcmp(a, b, static_cast<std::size_t>(count) * sizeof(Element)) == 0;
  }
}

template <class Element>
void Reverse(Element* values, std::int64_t count) {
  std::reverse(values, values + count);
}

template <class Element>
void Sort(Element* values, std::int64_t count) {
  std::sort(values, values + count, std::less<>());
}

template <class Element>
void PatternDefeatingSort(Element* values, std::int64_t count) {
  boost::sort::pdqsort(values, values + count, std::less<>());
}

void VectorSort(void* keys, std::int64_t count, std::size_t keySize) {
  const zkt::vector_sort::KeySorter* const sorter = zkt::vector_sort::FindKeySorter();
  if (sorter == nullptr) return;
  if (keySize == sizeof(std::int32_t))
    sorter->Sort(static_cast<std::int32_t*>(keys), static_cast<std::size_t>(count));
  else
    sorter->Sort(static_cast<std::int64_t*>(keys), static_cast<std::size_t>(count));
}

void Nothing(const void* /*array1*/, const void* /*array2*/) { __asm__ volatile(""); }

void SortByInvoker(std::int64_t* values, std::int64_t count, REALobject theDelegate,
                   std::int64_t (*invoker)(REALobject, std::int64_t, std::int64_t)) {
  std::sort(values, values + count, [=](std::int64_t a, std::int64_t b) { return invoker(theDelegate, a, b) < 0; });
}

template std::int64_t Sum(const std::int8_t*, std::int64_t);
template std::int64_t Sum(const std::int32_t*, std::int64_t);
template std::uint64_t Sum(const std::uint32_t*, std::int64_t);
template std::int64_t Sum(const std::int64_t*, std::int64_t);
template double Sum(const double*, std::int64_t);
template double Sum(const float*, std::int64_t);
#define FOR_EACH_TYPE(INSTANCE) \
  INSTANCE(std::uint8_t) INSTANCE(std::int32_t) INSTANCE(std::int64_t) INSTANCE(double) INSTANCE(float)
#define COUNT(T) template std::int64_t Count(const T*, T, std::int64_t);
#define EQUALS(T) template bool Equals(const T*, const T*, std::int64_t);
#define REVERSE(T) template void Reverse(T*, std::int64_t);
#define SORT(T)                         \
  template void Sort(T*, std::int64_t); \
  template void PatternDefeatingSort(T*, std::int64_t);
FOR_EACH_TYPE(COUNT)
FOR_EACH_TYPE(EQUALS)
FOR_EACH_TYPE(REVERSE)
FOR_EACH_TYPE(SORT)
SORT(std::int8_t)
#undef FOR_EACH_TYPE
#undef COUNT
#undef EQUALS
#undef REVERSE
#undef SORT

}  // namespace reference
