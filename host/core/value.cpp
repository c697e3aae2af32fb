#include "core/value.h"

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

namespace host {

namespace {

constexpr std::pair<const char*, TypeKind> kNames[] = {
    {"Boolean", TypeKind::kBoolean}, {"Color", TypeKind::kColor},     {"Currency", TypeKind::kCurrency},
    {"Double", TypeKind::kDouble},   {"Int8", TypeKind::kInt8},       {"Int16", TypeKind::kInt16},
    {"Int32", TypeKind::kInt32},     {"Integer", TypeKind::kInt64},   {"Int64", TypeKind::kInt64},
    {"Ptr", TypeKind::kPtr},         {"Single", TypeKind::kSingle},   {"String", TypeKind::kString},
    {"UInt8", TypeKind::kUInt8},     {"UInt16", TypeKind::kUInt16},   {"UInt32", TypeKind::kUInt32},
    {"UInt64", TypeKind::kUInt64},   {"Variant", TypeKind::kVariant}, {"Object", TypeKind::kObject},
};

}  // namespace

bool Type::operator==(const Type& other) const {
  return kind == other.kind && isArray == other.isArray && zkt::IsSameName(name, other.name);
}

TypeKind FindTypeKind(std::string_view name) {
  for (const auto& [known, kind] : kNames)
    if (zkt::IsSameName(known, name)) return kind;
  return TypeKind::kNothing;
}

std::string NameOf(const Type& type) {
  std::string name(type.name);
  for (const auto& [known, kind] : kNames)
    if (name.empty() && kind == type.kind) name = known;
  return name + (type.isArray ? "()" : "");
}

Value DefaultValue(const Type& type) {
  if (type.IsReference()) return {type, Ref<RefCounted>()};
  if (type.IsReal()) return {type, 0.0};
  return {type, std::int64_t{0}};
}

Value MakeValue(double real) { return {kDoubleType, real}; }
Value MakeValue(std::string_view text) {
  return {kStringType, text.empty() ? Ref<RefCounted>() : Ref<RefCounted>(MakeString(text))};
}

Value ReadNative(const Type& type, const void* address) {
  return WithNative(type, [&](auto native) -> Value {
    using Native = decltype(native);
    std::memcpy(&native, address, sizeof native);
    if constexpr (std::is_pointer_v<Native>) return {type, Retained(native)};
    if constexpr (std::is_floating_point_v<Native>) return {type, double{native}};
    if constexpr (std::is_integral_v<Native>)
      return {type, std::int64_t{type.kind == TypeKind::kBoolean ? native != 0 : native}};
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
