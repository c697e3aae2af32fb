// Maps C++ types to the Xojo types that they represent at the boundary.
#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "frame/catalogue/declaration_syntax.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

namespace type_names_detail {

// Returns whether values of a Xojo type cross the boundary as plain objects. These types are a few host types, and the
// plug-in's own classes and delegates, whose names all end in "ZKT". Other names are rejected, so that typos are found.
constexpr bool IsObject(std::string_view name) {
  constexpr std::string_view kOurSuffix = "ZKT";
  return IsOneOf(name, "Variant", "Object", "FolderItem", "Graphics") ||
         (name.size() > kOurSuffix.size() && IsSameName(name.substr(name.size() - kOurSuffix.size()), kOurSuffix));
}

}  // namespace type_names_detail

// Returns whether `Value` is the C++ type that represents the Xojo type.
template <class Value>
constexpr bool StandsFor(std::string_view xojoType) {
  // clang-format off
  if constexpr (std::is_same_v<Value, REALboolean>)   return IsOneOf(xojoType, "Boolean");
  else if constexpr (std::is_same_v<Value, REALcolor>)     return IsOneOf(xojoType, "Color");
  else if constexpr (std::is_same_v<Value, REALcurrency>)  return IsOneOf(xojoType, "Currency");
  else if constexpr (std::is_same_v<Value, REALdate>)      return IsOneOf(xojoType, "Date");
  else if constexpr (std::is_same_v<Value, REALdateTime>)  return IsOneOf(xojoType, "DateTime");
  else if constexpr (std::is_same_v<Value, double>)        return IsOneOf(xojoType, "Double");
  else if constexpr (std::is_same_v<Value, std::int32_t>)  return IsOneOf(xojoType, "Int32");
  else if constexpr (std::is_same_v<Value, std::int64_t>)  return IsOneOf(xojoType, "Int64", "Integer");
  else if constexpr (std::is_same_v<Value, void*>)         return IsOneOf(xojoType, "Ptr");
  else if constexpr (std::is_same_v<Value, float>)         return IsOneOf(xojoType, "Single");
  else if constexpr (std::is_same_v<Value, REALstring>)    return IsOneOf(xojoType, "String");
  else if constexpr (std::is_same_v<Value, std::uint32_t>) return IsOneOf(xojoType, "UInt32");
  else if constexpr (std::is_same_v<Value, std::uint64_t>) return IsOneOf(xojoType, "UInt64");
  else if constexpr (std::is_same_v<Value, REALobject>)    return type_names_detail::IsObject(xojoType);
  else return false;
  // clang-format on
}

// Returns whether `Array*` is the C++ type that represents an array of the Xojo type.
template <class Array>
constexpr bool ArrayStandsFor(std::string_view elementType) {
  // clang-format off
  if constexpr (std::is_same_v<Array, _REALarrayBoolean>)       return IsOneOf(elementType, "Boolean");
  else if constexpr (std::is_same_v<Array, _REALarrayColor>)    return IsOneOf(elementType, "Color");
  else if constexpr (std::is_same_v<Array, _REALarrayCurrency>) return IsOneOf(elementType, "Currency");
  else if constexpr (std::is_same_v<Array, _REALarrayDate>)     return IsOneOf(elementType, "Date");
  else if constexpr (std::is_same_v<Array, _REALarrayDateTime>) return IsOneOf(elementType, "DateTime");
  else if constexpr (std::is_same_v<Array, _REALarrayDouble>)   return IsOneOf(elementType, "Double");
  else if constexpr (std::is_same_v<Array, _REALarrayInt32>)    return IsOneOf(elementType, "Int32");
  else if constexpr (std::is_same_v<Array, _REALarrayInt64>)    return IsOneOf(elementType, "Int64", "Integer");
  else if constexpr (std::is_same_v<Array, _REALarrayObject>)   return IsOneOf(elementType, "Object");
  else if constexpr (std::is_same_v<Array, _REALarrayPtr>)      return IsOneOf(elementType, "Ptr");
  else if constexpr (std::is_same_v<Array, _REALarraySingle>)   return IsOneOf(elementType, "Single");
  else if constexpr (std::is_same_v<Array, _REALarrayString>)   return IsOneOf(elementType, "String");
  else if constexpr (std::is_same_v<Array, _REALarrayUInt32>)   return IsOneOf(elementType, "UInt32");
  else if constexpr (std::is_same_v<Array, _REALarrayUInt64>)   return IsOneOf(elementType, "UInt64");
  else if constexpr (std::is_same_v<Array, _REALarrayVariant>)  return IsOneOf(elementType, "Variant");
  else return false;
  // clang-format on
}

}  // namespace zkt
