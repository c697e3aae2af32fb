// Types and values of Xojo, as the host holds them.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "core/counted.h"
#include "core/strings.h"
#include "frame/catalogue/declaration_syntax.h"

namespace host {

enum class Basic {
  kNothing,
  kBoolean,
  kColor,
  kCurrency,
  kDouble,
  kInt32,
  kInt64,
  kPtr,
  kSingle,
  kString,
  kUInt32,
  kUInt64,
  kVariant,
  kObject,    // an instance of the class that the type's name tells; "Object" takes every class
  kDelegate,  // of the delegate type that the name tells
};

struct Type {
  Basic basic = Basic::kNothing;
  bool isArray = false;
  std::string_view name = {};  // of the class or delegate, as its declaration has it

  bool Is(Basic wanted) const { return !isArray && basic == wanted; }
  bool IsReference() const { return isArray || basic == Basic::kString || basic >= Basic::kVariant; }
  bool IsReal() const { return Is(Basic::kDouble) || Is(Basic::kSingle); }
  bool IsInteger() const;
  bool IsNumber() const { return IsReal() || IsInteger() || Is(Basic::kCurrency); }
  Type Element() const { return {basic, false, name}; }
  Type ArrayOf() const { return {basic, true, name}; }
  bool operator==(const Type& other) const;
};

inline constexpr Type kBooleanType = {Basic::kBoolean};
inline constexpr Type kColorType = {Basic::kColor};
inline constexpr Type kCurrencyType = {Basic::kCurrency};
inline constexpr Type kDoubleType = {Basic::kDouble};
inline constexpr Type kIntegerType = {Basic::kInt64};
inline constexpr Type kObjectType = {Basic::kObject, false, "Object"};
inline constexpr Type kStringType = {Basic::kString};
inline constexpr Type kVariantType = {Basic::kVariant};

// A type of the language by its name; nothing for any other name. Integer is Int64.
Basic FindBasic(std::string_view name);

// The type as it is written: "Int32()".
std::string NameOf(const Type& type);

// Calls `use` with a zero of the C++ type that values of the type have in memory and as arguments.
template <class Use>
auto WithNative(const Type& type, Use use) {
  if (type.IsReference()) return use(static_cast<Counted*>(nullptr));
  switch (type.basic) {
    case Basic::kBoolean:
      return use(std::uint8_t{0});
    case Basic::kInt32:
      return use(std::int32_t{0});
    case Basic::kColor:
    case Basic::kUInt32:
      return use(std::uint32_t{0});
    case Basic::kSingle:
      return use(0.0F);
    case Basic::kDouble:
      return use(0.0);
    default:
      return use(std::int64_t{0});
  }
}

// The bytes that an element of an array, or a field of instance data, takes.
inline std::int64_t SizeOf(const Type& type) {
  return WithNative(type, [](auto native) { return std::int64_t{sizeof native}; });
}

// Integers of every width and sign, Boolean, Color, Currency (scaled by 10,000) and Ptr share the first form;
// references own theirs.
using Payload = std::variant<std::int64_t, double, Owned<Counted>>;

struct Array;

struct Value {
  Type type;
  Payload payload;

  std::int64_t Integer() const { return std::get<std::int64_t>(payload); }
  double Real() const { return std::get<double>(payload); }
  Counted* Reference() const { return std::get<Owned<Counted>>(payload).Get(); }
  // The reference as what it refers to. The headers of objects and arrays define theirs.
  REALstringStruct* String() const { return static_cast<REALstringStruct*>(Reference()); }
  REALobjectStruct* Object() const;
  host::Array* Array() const;
  // The text of a String in UTF-8.
  std::string Text() const { return ToUTF8(String()); }
};

// What one unit of a Currency is in its integer.
inline constexpr std::int64_t kCurrencyScale = 10'000;

// A variable of the type before anything is assigned: 0, False, the empty string, Nil.
Value DefaultValue(const Type& type);

Value MakeValue(std::integral auto integer) { return {kIntegerType, static_cast<std::int64_t>(integer)}; }
Value MakeValue(double real);
Value MakeValue(std::string_view text);

// Reads the value that lies at an address in its native width: an array's element, a field, an argument. A reference
// there is borrowed, and the value takes one of its own.
Value ReadNative(const Type& type, const void* address);

// Writes a value, whose type is that of the place. A reference is written as it is, without taking one for the place.
void WriteNative(const Value& value, void* address);

// Orders names without regard to letter case.
struct NameOrder {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace host
