// Types and values of Xojo, as the host holds them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "core/counted.h"
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
  std::string_view name;  // of the class or delegate, as its declaration has it

  bool IsReference() const { return isArray || basic == Basic::kString || basic >= Basic::kVariant; }
  bool IsReal() const { return !isArray && (basic == Basic::kDouble || basic == Basic::kSingle); }
  bool IsInteger() const;
  bool IsNumber() const { return IsReal() || IsInteger() || (!isArray && basic == Basic::kCurrency); }
};

// A type of the language by its name; nothing for any other name. Integer is Int64.
Basic FindBasic(std::string_view name);

// The type as it is written: "Int32()".
std::string NameOf(const Type& type);

// The bytes that an element of an array, or a field of instance data, takes.
std::int64_t SizeOf(Basic basic);

// Integers of every width and sign, Boolean, Color, Currency (scaled by 10,000) and Ptr share the first form;
// references own theirs.
using Payload = std::variant<std::int64_t, double, Owned<Counted>>;

struct Value {
  Type type;
  Payload payload;

  std::int64_t Integer() const { return std::get<std::int64_t>(payload); }
  double Real() const { return std::get<double>(payload); }
  Counted* Reference() const { return std::get<Owned<Counted>>(payload).Get(); }
};

// What one unit of a Currency is in its integer.
inline constexpr std::int64_t kCurrencyScale = 10'000;

// A variable of the type before anything is assigned: 0, False, the empty string, Nil.
Value DefaultValue(const Type& type);

Value MakeValue(std::int64_t integer);
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
