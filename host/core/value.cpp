#include "core/value.h"

#include <strings.h>

#include <algorithm>
#include <cstring>

#include "core/strings.h"

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

template <class Native>
Native ReadAs(const void* address) {
  Native native;
  std::memcpy(&native, address, sizeof native);
  return native;
}

template <class Native, class Source>
void WriteAs(Source source, void* address) {
  const Native native = static_cast<Native>(source);
  std::memcpy(address, &native, sizeof native);
}

}  // namespace

bool Type::IsInteger() const {
  if (isArray) return false;
  return basic == Basic::kInt32 || basic == Basic::kInt64 || basic == Basic::kUInt32 || basic == Basic::kUInt64;
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

std::int64_t SizeOf(Basic basic) {
  switch (basic) {
    case Basic::kBoolean:
      return 1;
    case Basic::kColor:
    case Basic::kInt32:
    case Basic::kSingle:
    case Basic::kUInt32:
      return 4;
    default:
      return 8;
  }
}

Value DefaultValue(const Type& type) {
  if (type.IsReference()) return {type, Owned<Counted>()};
  if (type.IsReal()) return {type, 0.0};
  return {type, std::int64_t{0}};
}

Value MakeValue(std::int64_t integer) { return {{Basic::kInt64, false, {}}, integer}; }
Value MakeValue(double real) { return {{Basic::kDouble, false, {}}, real}; }
Value MakeValue(std::string_view text) {
  return {{Basic::kString, false, {}}, text.empty() ? Owned<Counted>() : Owned<Counted>(MakeString(text))};
}

Value ReadNative(const Type& type, const void* address) {
  if (type.IsReference()) return {type, Retained(ReadAs<Counted*>(address))};
  switch (type.basic) {
    case Basic::kBoolean:
      return {type, std::int64_t{ReadAs<std::uint8_t>(address) != 0}};
    case Basic::kInt32:
      return {type, std::int64_t{ReadAs<std::int32_t>(address)}};
    case Basic::kColor:
    case Basic::kUInt32:
      return {type, std::int64_t{ReadAs<std::uint32_t>(address)}};
    case Basic::kSingle:
      return {type, double{ReadAs<float>(address)}};
    case Basic::kDouble:
      return {type, ReadAs<double>(address)};
    default:
      return {type, ReadAs<std::int64_t>(address)};
  }
}

void WriteNative(const Value& value, void* address) {
  if (value.type.IsReference()) return WriteAs<Counted*>(value.Reference(), address);
  switch (value.type.basic) {
    case Basic::kBoolean:
      return WriteAs<std::uint8_t>(value.Integer(), address);
    case Basic::kInt32:
    case Basic::kColor:
    case Basic::kUInt32:
      return WriteAs<std::uint32_t>(value.Integer(), address);
    case Basic::kSingle:
      return WriteAs<float>(value.Real(), address);
    case Basic::kDouble:
      return WriteAs<double>(value.Real(), address);
    default:
      return WriteAs<std::int64_t>(value.Integer(), address);
  }
}

bool NameOrder::operator()(std::string_view a, std::string_view b) const {
  const int order = ::strncasecmp(a.data(), b.data(), std::min(a.size(), b.size()));
  return order != 0 ? order < 0 : a.size() < b.size();
}

}  // namespace host
