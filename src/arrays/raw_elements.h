// Converts elements to the types that the kernels use.
#pragma once

#include <cstdint>
#include <type_traits>

namespace zkt {

// Floating-point numbers keep their type. All other elements become unsigned integers of the same size.
template <class Element>
using RawOf =
    std::conditional_t<std::is_floating_point_v<Element>, Element,
                       std::conditional_t<sizeof(Element) == 1, std::uint8_t,
                                          std::conditional_t<sizeof(Element) == 4, std::uint32_t, std::uint64_t>>>;

template <class Element>
const RawOf<Element>* AsRaw(const Element* elements) {
  return reinterpret_cast<const RawOf<Element>*>(elements);
}

// Reinterprets the elements, including floating-point ones, as unsigned integers. Intended for loops that only move
// elements.
template <class Element>
auto* AsBits(Element* elements) {
  using Bits = std::conditional_t<sizeof(Element) == 1, std::uint8_t,
                                  std::conditional_t<sizeof(Element) == 4, std::uint32_t, std::uint64_t>>;
  return reinterpret_cast<Bits*>(elements);
}

}  // namespace zkt
