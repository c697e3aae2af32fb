// The host's representation of Xojo types and values.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "core/ref_counted.h"
#include "core/strings.h"
#include "frame/catalogue/declaration_syntax.h"

namespace host {

enum class TypeKind {
  kNothing,
  kBoolean,
  kColor,
  kCurrency,
  kDouble,
  kInt8,  // the integer types: signed, then unsigned
  kInt16,
  kInt32,
  kInt64,
  kUInt8,
  kUInt16,
  kUInt32,
  kUInt64,
  kPtr,
  kSingle,
  kString,
  kEnumeration,  // a value of the named enumeration, such as "Picture.Formats"
  kVariant,
  kObject,    // an instance of the named class; "Object" accepts every class
  kDelegate,  // a delegate of the named type
};

struct Type {
  TypeKind kind = TypeKind::kNothing;
  bool isArray = false;
  std::string_view name = {};  // of the enumeration, class or delegate type, as declared

  bool Is(TypeKind wanted) const { return !isArray && kind == wanted; }
  bool IsReference() const { return isArray || kind == TypeKind::kString || kind >= TypeKind::kVariant; }
  bool IsReal() const { return Is(TypeKind::kDouble) || Is(TypeKind::kSingle); }
  bool IsInteger() const { return !isArray && kind >= TypeKind::kInt8 && kind <= TypeKind::kUInt64; }
  bool IsUnsigned() const { return IsInteger() && kind >= TypeKind::kUInt8; }
  bool IsNumber() const { return IsReal() || IsInteger() || Is(TypeKind::kCurrency); }
  Type Element() const { return {kind, false, name}; }
  Type ArrayOf() const { return {kind, true, name}; }
  bool operator==(const Type& other) const;
};

inline constexpr Type kBooleanType = {TypeKind::kBoolean};
inline constexpr Type kColorType = {TypeKind::kColor};
inline constexpr Type kCurrencyType = {TypeKind::kCurrency};
inline constexpr Type kDoubleType = {TypeKind::kDouble};
inline constexpr Type kIntegerType = {TypeKind::kInt64};
inline constexpr Type kObjectType = {TypeKind::kObject, false, "Object"};
inline constexpr Type kStringType = {TypeKind::kString};
inline constexpr Type kVariantType = {TypeKind::kVariant};

// Returns the built-in type with that name, or kNothing. Integer is Int64.
TypeKind FindTypeKind(std::string_view name);

// Returns the type in Xojo's notation, such as "Int32()".
std::string NameOf(const Type& type);

// Calls `use` with a zero of the C++ type that represents `type` in memory and in calls.
template <class Use>
auto WithNative(const Type& type, Use use) {
  if (type.IsReference()) return use(static_cast<RefCounted*>(nullptr));
  switch (type.kind) {
    case TypeKind::kBoolean:
    case TypeKind::kUInt8:
      return use(std::uint8_t{0});
    case TypeKind::kInt8:
      return use(std::int8_t{0});
    case TypeKind::kInt16:
      return use(std::int16_t{0});
    case TypeKind::kUInt16:
      return use(std::uint16_t{0});
    case TypeKind::kInt32:
      return use(std::int32_t{0});
    case TypeKind::kColor:
    case TypeKind::kUInt32:
      return use(std::uint32_t{0});
    case TypeKind::kSingle:
      return use(0.0F);
    case TypeKind::kDouble:
      return use(0.0);
    default:
      return use(std::int64_t{0});
  }
}

// The size in bytes of an array element or a field of instance data.
inline std::int64_t SizeOf(const Type& type) {
  return WithNative(type, [](auto native) { return std::int64_t{sizeof native}; });
}

// Integers of every width, enumerations, Boolean, Color, Currency (scaled by 10,000) and Ptr are stored as the
// integer. The payload owns its reference, if any.
using Payload = std::variant<std::int64_t, double, Ref<RefCounted>>;

struct Array;

struct Value {
  Type type;
  Payload payload;

  std::int64_t Integer() const { return std::get<std::int64_t>(payload); }
  double Real() const { return std::get<double>(payload); }
  RefCounted* Reference() const { return std::get<Ref<RefCounted>>(payload).Get(); }
  // The reference, cast to its type. Object() and Array() are defined in the headers of their types.
  REALstringStruct* String() const { return static_cast<REALstringStruct*>(Reference()); }
  REALobjectStruct* Object() const;
  host::Array* Array() const;
  // The content of a String in UTF-8.
  std::string Text() const { return ToUTF8(String()); }
};

// The integer that represents a Currency of 1.
inline constexpr std::int64_t kCurrencyScale = 10'000;

// The initial value of a variable: 0, False, the empty string or Nil.
Value DefaultValue(const Type& type);

Value MakeValue(std::integral auto integer) { return {kIntegerType, static_cast<std::int64_t>(integer)}; }
Value MakeValue(double real);
Value MakeValue(std::string_view text);

// Reads a value at its native width from an array element, a field or an argument. A reference in memory is borrowed,
// so the result retains it.
Value ReadNative(const Type& type, const void* address);

// Writes a value, which must have the type of the destination. A reference is written without being retained.
void WriteNative(const Value& value, void* address);

// Orders names, ignoring case.
struct NameOrder {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace host
