// How each array type stores its elements. A new element type needs one line here and a new function in each function
// family.
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/contract/plugin_interface.h"

namespace zkt {

template <class Array>
struct ArrayTraits;

// clang-format off
#define ELEMENT(Type, StorageType) \
  template <> struct ArrayTraits<_REALarray##Type> { using Storage = StorageType; };
ELEMENT(Boolean,  std::uint8_t)   // 0 is false; all other values are true
ELEMENT(Color,    std::uint32_t)
ELEMENT(Currency, std::int64_t)
ELEMENT(Date,     REALdate)
ELEMENT(DateTime, REALdateTime)
ELEMENT(Double,   double)
ELEMENT(Int32,    std::int32_t)
ELEMENT(Int64,    std::int64_t)
ELEMENT(Integer,  std::int64_t)
ELEMENT(Object,   REALobject)
ELEMENT(Ptr,      void*)
ELEMENT(Single,   float)
ELEMENT(String,   REALstring)
ELEMENT(UInt32,   std::uint32_t)
ELEMENT(UInt64,   std::uint64_t)
ELEMENT(Variant,  REALobject)
#undef ELEMENT
// clang-format on

template <class Array>
using ElementOf = typename ArrayTraits<Array>::Storage;

// Whether the elements are references that the array owns.
template <class Element>
inline constexpr bool kIsReference = std::is_pointer_v<Element> && !std::is_same_v<Element, void*>;

}  // namespace zkt
