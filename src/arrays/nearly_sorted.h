// Sorts numbers that are nearly all in order, in linear time.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>

namespace zkt {

namespace nearly_sorted {

// With more outliers, merging would no longer take linear time.
inline constexpr std::size_t kMostOutliers = 1 << 18;

// Moves the outliers, the numbers that are out of order, to the end. Returns the number of the others, which are then
// in order. Stops and returns 0 if there are too many outliers.
template <class Number, class GoesBefore>
std::size_t MoveOutliersToEnd(std::span<Number> numbers, GoesBefore goesBefore) {
  // If this many numbers in a row go before the last ordered number, the last ordered number is probably the outlier.
  constexpr std::size_t kLongRow = 8;
  const std::size_t limit = std::min(numbers.size() / 8, kMostOutliers);
  std::size_t ordered = 0;  // the ordered numbers come first, and the outliers follow them
  std::size_t row = 0;
  const auto goesBeforeLast = [&](Number number) { return ordered > 0 && goesBefore(number, numbers[ordered - 1]); };
  for (std::size_t next = 0; next < numbers.size(); ++next) {
    const Number number = numbers[next];
    if (goesBeforeLast(number)) {
      if (next - ordered >= limit) return 0;
      // If the number can follow the second-to-last ordered number, the last ordered number is the outlier.
      const bool canFollowSecondToLast = ordered == 1 || !goesBefore(number, numbers[ordered - 2]);
      if (!canFollowSecondToLast && ++row < kLongRow) continue;
      // One of the numbers in the row may itself be an outlier, so the greatest of them decides.
      const Number* const end = &numbers[next] + 1;
      const Number greatest = canFollowSecondToLast ? number : *std::max_element(end - kLongRow, end, goesBefore);
      while (goesBeforeLast(greatest)) --ordered;
      row = 0;
      if (goesBeforeLast(number)) continue;
    }
    std::swap(numbers[ordered++], numbers[next]);
    row = 0;
  }
  return ordered;
}

// Merges the ordered numbers with the sorted outliers behind them. Takes as many outliers at a time as the buffer can
// hold, beginning with the last. The function is never inlined, so that other sorts do not reserve the memory for the
// buffer.
template <class Number, class GoesBefore>
[[gnu::noinline]] void MergeOutliers(std::span<Number> numbers, std::size_t ordered, GoesBefore goesBefore) {
  std::array<Number, 1024> buffer;
  Number* const first = numbers.data();
  while (ordered < numbers.size()) {
    std::size_t taken = std::min(buffer.size(), numbers.size() - ordered);
    Number* end = first + numbers.size();
    std::copy_n(end - taken, taken, buffer.data());
    Number* place = first;
    Number* partner = first;
    if (taken < numbers.size() - ordered) {
      // Only the ordered numbers from here on take part. They change places with the outliers that are not taken.
      place = std::upper_bound(first, first + ordered, buffer[0], goesBefore);
      partner = std::rotate(place, first + ordered, end - taken);
    }
    for (Number* last = end - taken; taken > 0;) {
      const bool isPartnerLast = last > partner && goesBefore(buffer[taken - 1], last[-1]);
      *--end = isPartnerLast ? *--last : buffer[--taken];
    }
    ordered = static_cast<std::size_t>(place - first);
    numbers = numbers.first(static_cast<std::size_t>(partner - first));
  }
}

}  // namespace nearly_sorted

// Sorts the numbers and returns true if fewer than an eighth of them, and fewer than kMostOutliers, are out of order.
// Otherwise, returns false; in this case, the numbers have been rearranged, but are not sorted.
template <class Number, class GoesBefore>
bool SortNearlySorted(std::span<Number> numbers, GoesBefore goesBefore) {
  const std::size_t ordered = nearly_sorted::MoveOutliersToEnd(numbers, goesBefore);
  if (ordered == 0) return false;
  const auto outliers = numbers.subspan(ordered);
  std::sort(outliers.begin(), outliers.end(), goesBefore);
  nearly_sorted::MergeOutliers(numbers, ordered, goesBefore);
  return true;
}

}  // namespace zkt
