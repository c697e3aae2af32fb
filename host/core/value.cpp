#include "core/value.h"

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace host {

namespace {

struct BasicName {
  const char* name;
  Basic basic;
};

constexpr BasicName kNames[] = {
    {"Boolean", Basic::kBoolean}, {"Color", Basic::kColor},   {"Currency", Basic::kCurrency},
    {"Double", Basic::kDouble},   {"Int32", Basic::kInt32},   {"Integer", Basic::kInt64},
    {"Int64", Basic::kInt64},     {"Ptr", Basic::kPtr},       {"Single", Basic::kSingle},
    {"String", Basic::kString},   {"UInt32", Basic::kUInt32}, {"UInt64", Basic::kUInt64},
    {"Variant", Basic::kVariant}, {"Object", Basic::kObject},
};

}  // namespace

bool Type::IsInteger() const {
  return Is(Basic::kInt32) || Is(Basic::kInt64) || Is(Basic::kUInt32) || Is(Basic::kUInt64);
}

bool Type::operator==(const Type& other) const {
  return basic == other.basic && isArray == other.isArray && zkt::IsSameName(name, other.name);
}

Basic FindBasic(std::string_view name) {
  for (const BasicName& known : kNames)
    if (zkt::IsSameName(known.name, name)) return known.basic;
  return Basic::kNothing;
}

std::string NameOf(const Type& type) {
  std::string name(type.name);
  for (const BasicName& known : kNames)
    if (name.empty() && known.basic == type.basic) name = known.name;
  return name + (type.isArray ? "()" : "");
}

Value DefaultValue(const Type& type) {
  if (type.IsReference()) return {type, Owned<Counted>()};
  if (type.IsReal()) return {type, 0.0};
  return {type, std::int64_t{0}};
}

Value MakeValue(double real) { return {kDoubleType, real}; }
Value MakeValue(std::string_view text) {
  return {kStringType, text.empty() ? Owned<Counted>() : Owned<Counted>(MakeString(text))};
}

Value ReadNative(const Type& type, const void* address) {
  return WithNative(type, [&](auto native) -> Value {
    using Native = decltype(native);
    std::memcpy(&native, address, sizeof native);
    if constexpr (std::is_pointer_v<Native>) return {type, Retained(native)};
    if constexpr (std::is_floating_point_v<Native>) return {type, double{native}};
    if constexpr (std::is_same_v<Native, std::uint8_t>) return {type, std::int64_t{native != 0}};
    if constexpr (std::is_integral_v<Native>) return {type, std::int64_t{native}};
  });
}

void WriteNative(const Value& value, void* address) {
  WithNative(value.type, [&](auto native) {
    using Native = decltype(native);
    if constexpr (std::is_pointer_v<Native>) native = value.Reference();
    if constexpr (std::is_floating_point_v<Native>) native = static_cast<Native>(value.Real());
    if constexpr (std::is_integral_v<Native>) native = static_cast<Native>(value.Integer());
    std::memcpy(address, &native, sizeof native);
  });
}

bool NameOrder::operator()(std::string_view a, std::string_view b) const {
  const int order = ::strncasecmp(a.data(), b.data(), std::min(a.size(), b.size()));
  return order != 0 ? order < 0 : a.size() < b.size();
}

}  // namespace host
