// A stable merge sort that uses existing runs and makes few comparisons, because each comparison calls Xojo code. An
// inconsistent comparison affects only the resulting order, because every index is checked against the bounds of its
// buffer.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>

namespace zkt {

// Sorts n elements with at most n log2 n + O(n) calls to goesBefore(a, b). Makes n - 1 calls if the elements are
// already in order or in strictly reverse order, fewer than 2 n calls if they are in reverse order and some are equal,
// and far fewer than n log2 n calls if there are only a few distinct values. An exception from goesBefore propagates
// and leaves the elements unordered, with some of them missing.
template <class Element, class GoesBefore>
class MergeSort {
 public:
  // `spare` must have room for SpareFor(elements.size()) elements, whose initial values do not matter.
  MergeSort(std::span<Element> elements, Element* spare, GoesBefore goesBefore)
      : first_(elements.data()), count_(elements.size()), spare_(spare), goesBefore_(goesBefore) {}

  static std::size_t SpareFor(std::size_t count) { return count / 2; }

  // Merges runs in the order of a nearly optimal binary tree (Munro and Wild, "Nearly-Optimal Mergesorts", 2018): a
  // tree node separates each pair of neighboring runs, and its depth depends only on where the runs begin and end.
  void Run() {
    if (count_ < 2) return;
    const std::size_t leastRun = LeastRun();
    std::size_t pending = 0;
    Piece current{0, FindRun(0, leastRun), 0};
    while (current.end < count_) {
      const Piece next{current.end, FindRun(current.end, leastRun), 0};
      current.depth = DepthBetween(current, next);
      while (pending > 0 && pieces_[pending - 1].depth >= current.depth) current = Merged(pieces_[--pending], current);
      pieces_[pending++] = current;
      current = next;
    }
    while (pending > 0) current = Merged(pieces_[--pending], current);
  }

 private:
  // A sorted range, and the depth of the tree node between this range and the next.
  struct Piece {
    std::size_t begin, end;
    int depth;
  };

  // Short runs are extended by insertion to a length between half this number and this number. Insertion needs no more
  // comparisons than merging and moves less data.
  static constexpr std::size_t kMaxInserted = 32;

  // The depths of pending pieces strictly increase, and no depth exceeds the number of bits in an index.
  static constexpr std::size_t kMaxPending = std::numeric_limits<std::size_t>::digits + 2;

  // Returns the minimum run length. If no run is longer, the number of runs is a power of 2 or slightly less.
  std::size_t LeastRun() const {
    std::size_t count = count_, isRounded = 0;
    for (; count >= kMaxInserted; count /= 2) isRounded |= count % 2;
    return count + isRounded;
  }

  // Returns the end of the run that starts at `begin`. Extends a run shorter than `least` with the elements that
  // follow.
  std::size_t FindRun(std::size_t begin, std::size_t least) {
    std::size_t end = begin + 1;
    if (end == count_) return end;
    while (end < count_ && !goesBefore_(first_[end], first_[end - 1])) ++end;
    const bool isDescent = end < count_ && (end == begin + 1 || !goesBefore_(first_[begin], first_[end - 1]));
    if (isDescent) end = ReverseDescent(begin, end);
    const std::size_t target = begin + std::min(least, count_ - begin);
    for (; end < target; ++end) Insert(begin, end);
    return std::max(end, target);
  }

  // Extends the descending run in [begin, end), which may contain equal elements, reverses it, and returns its new end.
  // Groups of equal elements are reversed twice, because equal elements must keep their order.
  std::size_t ReverseDescent(std::size_t begin, std::size_t end) {
    std::reverse(first_ + begin, first_ + end);
    std::size_t equals = end;
    for (++end; end < count_; ++end) {
      if (goesBefore_(first_[end], first_[end - 1])) {
        std::reverse(first_ + equals, first_ + end);
        equals = end;
      } else if (goesBefore_(first_[end - 1], first_[end])) {
        break;
      }
    }
    std::reverse(first_ + equals, first_ + end);
    std::reverse(first_ + begin, first_ + end);
    return end;
  }

  // The result of a comparison is used in arithmetic instead of a branch, because no processor could predict the
  // branch. Choose avoids a conditional expression, because compilers turn such an expression into a branch if its
  // condition is the result of a call.
  static std::size_t AsNumber(bool isTrue) { return isTrue ? 1 : 0; }

  static const Element* Choose(std::size_t isFirst, const Element* first, const Element* second) {
    const auto a = reinterpret_cast<std::uintptr_t>(first), b = reinterpret_cast<std::uintptr_t>(second);
    return reinterpret_cast<const Element*>(b ^ ((a ^ b) & (0 - isFirst)));
  }

  // Inserts the element at `end` into the sorted range before it, after any equal elements.
  void Insert(std::size_t begin, std::size_t end) {
    const Element inserted = first_[end];
    const GoesBefore goesBefore = goesBefore_;
    Element* place = first_ + begin;
    for (std::size_t left = end - begin; left > 0;) {
      const std::size_t half = left / 2;
      const std::size_t isBehind = 1 - AsNumber(goesBefore(inserted, place[half]));
      place += (half + 1) & (0 - isBehind);
      // If `left` is even, the upper part is one element shorter than the lower part.
      left = half - (isBehind & (1 - left % 2));
    }
    std::memmove(place + 1, place, static_cast<std::size_t>(first_ + end - place) * sizeof(Element));
    *place = inserted;
  }

  // Returns the depth of the first node at which a binary tree over all indices separates the midpoints of two
  // neighboring pieces.
  int DepthBetween(const Piece& left, const Piece& right) const {
    // Midpoints are scaled to use all bits of an index without overflow.
    const int shift = std::countl_zero(count_) - 1;
    const std::size_t scaleEnd = count_ << shift;
    std::size_t a = ((left.begin + left.end) << shift) / 2, b = ((right.begin + right.end) << shift) / 2;
    std::size_t low = 0, high = scaleEnd;
    int depth = 0;
    for (; depth < std::numeric_limits<std::size_t>::digits; ++depth) {
      const std::size_t middle = low + (high - low) / 2;
      if (a < middle && b >= middle) break;
      (b < middle ? high : low) = middle;
    }
    return depth;
  }

  // The last eight choices of a merge, one bit each. After eight identical choices, more of the same are likely, so a
  // search finds out how many follow, with fewer than one comparison per choice (McIlroy, "Optimistic Sorting", 1993).
  class Choices {
   public:
    // Adds a choice and returns whether the last eight choices are all the same.
    bool AddAndCheck(std::size_t choice) {
      last_ = last_ << 1 | choice;
      return ((last_ + 1) & 0xFF) <= 1;
    }
    void Forget() { last_ = kMixed; }

   private:
    static constexpr std::size_t kMixed = 0b01010101;
    std::size_t last_ = kMixed;
  };

  // Returns the first index that does not satisfy the condition, or `count` if all indices below `count` satisfy it. If
  // the result is r, checks about 2 log2 r indices.
  template <class Condition>
  static std::size_t CountLeading(std::size_t count, Condition isSatisfied) {
    std::size_t satisfied = 0, probe = 0;
    for (; probe < count && isSatisfied(probe); probe = 2 * probe + 1) satisfied = probe + 1;
    for (std::size_t end = std::min(probe, count); satisfied < end;) {
      const std::size_t middle = satisfied + (end - satisfied) / 2;
      if (isSatisfied(middle))
        satisfied = middle + 1;
      else
        end = middle;
    }
    return satisfied;
  }

  Piece Merged(const Piece& left, const Piece& right) {
    // One comparison is enough if the two pieces are already in order.
    if (goesBefore_(first_[right.begin], first_[left.end - 1])) {
      if (left.end - left.begin <= right.end - right.begin)
        MergeFromFront(left.begin, left.end, right.end);
      else
        MergeFromBack(left.begin, left.end, right.end);
    }
    return {left.begin, right.end, right.depth};
  }

  // Copies the left piece to the spare memory. The merged elements then always fit in front of the rest of the right
  // piece. Both merge loops use so few variables that hardly any are spilled to the stack around a call.
  void MergeFromFront(std::size_t begin, std::size_t middle, std::size_t end) {
    std::memcpy(spare_, first_ + begin, (middle - begin) * sizeof(Element));
    const GoesBefore goesBefore = goesBefore_;
    const Element* left = spare_;
    const Element* const leftEnd = spare_ + (middle - begin);
    Element* right = first_ + middle;
    const Element* const rightEnd = first_ + end;
    const auto take = [&](std::size_t isRight) {
      right[left - leftEnd] = *Choose(isRight, right, left);
      right += isRight;
      left += 1 - isRight;
    };
    Choices choices;
    while (left != leftEnd && right != rightEnd) {
      const std::size_t isRight = AsNumber(goesBefore(*right, *left));
      take(isRight);
      if (!choices.AddAndCheck(isRight)) [[likely]]
        continue;
      choices.Forget();
      if (isRight != 0) {
        const std::size_t more = CountLeading(static_cast<std::size_t>(rightEnd - right),
                                              [=](std::size_t i) { return goesBefore(right[i], *left); });
        std::memmove(right + (left - leftEnd), right, more * sizeof(Element));
        right += more;
      } else {
        const std::size_t more = CountLeading(static_cast<std::size_t>(leftEnd - left),
                                              [=](std::size_t i) { return !goesBefore(*right, left[i]); });
        std::memcpy(right + (left - leftEnd), left, more * sizeof(Element));
        left += more;
      }
      // The search has ended at an element that goes after the next element of the other piece, so the other piece's
      // element is taken.
      if (left != leftEnd && right != rightEnd) take(1 - isRight);
    }
    std::memcpy(right + (left - leftEnd), left, static_cast<std::size_t>(leftEnd - left) * sizeof(Element));
  }

  // Does the same as MergeFromFront from the other end, with the right piece in the spare memory.
  void MergeFromBack(std::size_t begin, std::size_t middle, std::size_t end) {
    std::memcpy(spare_, first_ + middle, (end - middle) * sizeof(Element));
    const GoesBefore goesBefore = goesBefore_;
    Element* leftEnd = first_ + middle;
    const Element* const left = first_ + begin;
    const Element* rightEnd = spare_ + (end - middle);
    const Element* const right = spare_;
    const auto take = [&](std::size_t isLeft) {
      leftEnd[rightEnd - right - 1] = Choose(isLeft, leftEnd, rightEnd)[-1];
      leftEnd -= isLeft;
      rightEnd -= 1 - isLeft;
    };
    Choices choices;
    while (leftEnd != left && rightEnd != right) {
      const std::size_t isLeft = AsNumber(goesBefore(rightEnd[-1], leftEnd[-1]));
      take(isLeft);
      if (!choices.AddAndCheck(isLeft)) [[likely]]
        continue;
      choices.Forget();
      if (isLeft != 0) {
        const std::size_t more = CountLeading(static_cast<std::size_t>(leftEnd - left), [=](std::size_t i) {
          return goesBefore(rightEnd[-1], *(leftEnd - 1 - i));
        });
        leftEnd -= more;
        std::memmove(leftEnd + (rightEnd - right), leftEnd, more * sizeof(Element));
      } else {
        const std::size_t more = CountLeading(static_cast<std::size_t>(rightEnd - right), [=](std::size_t i) {
          return !goesBefore(*(rightEnd - 1 - i), leftEnd[-1]);
        });
        rightEnd -= more;
        std::memcpy(leftEnd + (rightEnd - right), rightEnd, more * sizeof(Element));
      }
      if (leftEnd != left && rightEnd != right) take(1 - isLeft);
    }
    std::memcpy(leftEnd, right, static_cast<std::size_t>(rightEnd - right) * sizeof(Element));
  }

  Element* const first_;
  const std::size_t count_;
  Element* const spare_;
  GoesBefore goesBefore_;
  std::array<Piece, kMaxPending> pieces_;
};

}  // namespace zkt
