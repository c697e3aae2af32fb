// A stable merge sort that asks for few comparisons, since a comparison is a call into the caller's program. It uses
// runs that are there already, and works for any answers: every index is checked against the bounds of its buffer, so
// that a comparison that contradicts itself decides the order alone.
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

// At most n log2 n + O(n) calls of goesBefore(a, b) for n elements, n - 1 if they are in order already or strictly in
// the reverse order, and less than 2 n if they are in the reverse order and some are equal. An exception of goesBefore
// passes through; it leaves the elements in disorder, with some missing.
template <class Element, class GoesBefore>
class MergeSort {
 public:
  // `spare` has room for SpareFor(elements.size()) elements, whose values do not matter.
  MergeSort(std::span<Element> elements, Element* spare, GoesBefore goesBefore)
      : first_(elements.data()), count_(elements.size()), spare_(spare), goesBefore_(goesBefore) {}

  static std::size_t SpareFor(std::size_t count) { return count / 2; }

  // Runs are merged in the order of a nearly optimal binary tree over them (Munro and Wild, "Nearly-Optimal
  // Mergesorts", 2018): between two runs lies a node of the tree, whose depth depends only on where they begin and end.
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
  // Elements in order: indices, and the depth of the node behind it.
  struct Piece {
    std::size_t begin, end;
    int depth;
  };

  // Between half of this and this many elements are put in order by insertion, which takes as few comparisons as
  // merging and moves less.
  static constexpr std::size_t kMostInserted = 32;

  // Depths of pending pieces rise strictly, and none is above the width of an index.
  static constexpr std::size_t kMostPending = std::numeric_limits<std::size_t>::digits + 2;

  // So that the runs are a power of 2, or a few less, if none is there already.
  std::size_t LeastRun() const {
    std::size_t count = count_, isRounded = 0;
    for (; count >= kMostInserted; count /= 2) isRounded |= count % 2;
    return count + isRounded;
  }

  // Gives the end of a run that begins here, at least so many elements long if there are as many.
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

  // Finds the end of a descent that begins with elements that are equal, up to `end`, and reverses it. Elements that
  // are equal must not change places: they are reversed by themselves first.
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

  // What a comparison decides is computed, not branched to, since no processor could guess it: by arithmetic, because
  // compilers turn a conditional expression on the result of a call into a branch.
  static std::size_t AsNumber(bool isTrue) { return isTrue ? 1 : 0; }

  static const Element* Choose(std::size_t isFirst, const Element* first, const Element* second) {
    const auto a = reinterpret_cast<std::uintptr_t>(first), b = reinterpret_cast<std::uintptr_t>(second);
    return reinterpret_cast<const Element*>(b ^ ((a ^ b) & (0 - isFirst)));
  }

  // Inserts the element at `end` into the elements before it, behind those that are equal.
  void Insert(std::size_t begin, std::size_t end) {
    const Element inserted = first_[end];
    const GoesBefore goesBefore = goesBefore_;
    Element* place = first_ + begin;
    for (std::size_t left = end - begin; left > 0;) {
      const std::size_t half = left / 2;
      const std::size_t isBehind = 1 - AsNumber(goesBefore(inserted, place[half]));
      place += (half + 1) & (0 - isBehind);
      // The upper part is one shorter where the parts cannot be equal.
      left = half - (isBehind & (1 - left % 2));
    }
    std::memmove(place + 1, place, static_cast<std::size_t>(first_ + end - place) * sizeof(Element));
    *place = inserted;
  }

  // The depth of the first node at which a binary tree over all indices parts the middles of two neighbors.
  int DepthBetween(const Piece& left, const Piece& right) const {
    // Twice the middles, in units in which all indices together are at most the upper half of the range.
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

  Piece Merged(const Piece& left, const Piece& right) {
    // One call saves all others where the pieces are in order already.
    if (goesBefore_(first_[right.begin], first_[left.end - 1])) {
      if (left.end - left.begin <= right.end - right.begin)
        MergeFromFront(left.begin, left.end, right.end);
      else
        MergeFromBack(left.begin, left.end, right.end);
    }
    return {left.begin, right.end, right.depth};
  }

  // The left piece goes to the spare memory; there is room for as many elements before the rest of the right one. Both
  // loops keep so few variables that hardly one has to be stored during a call.
  void MergeFromFront(std::size_t begin, std::size_t middle, std::size_t end) {
    std::memcpy(spare_, first_ + begin, (middle - begin) * sizeof(Element));
    const GoesBefore goesBefore = goesBefore_;
    const Element* left = spare_;
    const Element* const leftEnd = spare_ + (middle - begin);
    Element* right = first_ + middle;
    const Element* const rightEnd = first_ + end;
    while (left != leftEnd && right != rightEnd) {
      const std::size_t isRight = AsNumber(goesBefore(*right, *left));
      right[left - leftEnd] = *Choose(isRight, right, left);
      right += isRight;
      left += 1 - isRight;
    }
    std::memcpy(right + (left - leftEnd), left, static_cast<std::size_t>(leftEnd - left) * sizeof(Element));
  }

  // The same from the other end, with the right piece in the spare memory.
  void MergeFromBack(std::size_t begin, std::size_t middle, std::size_t end) {
    std::memcpy(spare_, first_ + middle, (end - middle) * sizeof(Element));
    const GoesBefore goesBefore = goesBefore_;
    Element* leftEnd = first_ + middle;
    const Element* const left = first_ + begin;
    const Element* rightEnd = spare_ + (end - middle);
    const Element* const right = spare_;
    while (leftEnd != left && rightEnd != right) {
      const std::size_t isLeft = AsNumber(goesBefore(rightEnd[-1], leftEnd[-1]));
      leftEnd[rightEnd - right - 1] = Choose(isLeft, leftEnd, rightEnd)[-1];
      leftEnd -= isLeft;
      rightEnd -= 1 - isLeft;
    }
    std::memcpy(leftEnd, right, static_cast<std::size_t>(rightEnd - right) * sizeof(Element));
  }

  Element* const first_;
  const std::size_t count_;
  Element* const spare_;
  GoesBefore goesBefore_;
  std::array<Piece, kMostPending> pieces_;
};

}  // namespace zkt
