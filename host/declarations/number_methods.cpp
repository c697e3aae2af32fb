// Methods of numbers, Booleans, colors, pointers and Variants.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/framework.h"
#include "declarations/conversion.h"
#include "declarations/errors.h"

namespace host {

namespace {

template <TypeKind kKind, class T>
const REALstringStruct* ToText(T value) {
  return MakeString(Show(ReadNative({kKind}, &value)));
}

std::int64_t ReadWhole(const std::string& text) { return std::strtoll(text.c_str(), nullptr, 10); }

// The bytes of a color are, from highest to lowest, transparency, red, green and blue.
std::uint32_t MakeColor(std::int64_t red, std::int64_t green, std::int64_t blue, std::int64_t alpha) {
  return static_cast<std::uint32_t>((alpha & 0xFF) << 24 | (red & 0xFF) << 16 | (green & 0xFF) << 8 | (blue & 0xFF));
}
template <int kShift>
std::int64_t PartOf(std::uint32_t color) {
  return color >> kShift & 0xFF;
}

// A Ptr is not checked: access to an invalid address crashes the process, as it does in Xojo.
#define UNCHECKED __attribute__((noinline, no_sanitize("address", "undefined")))

template <class T>
UNCHECKED T ReadAt(const char* base, std::int64_t offset) {
  return *reinterpret_cast<const volatile T*>(base + offset);
}
template <class T>
UNCHECKED void WriteAt(char* base, std::int64_t offset, T value) {
  *reinterpret_cast<volatile T*>(base + offset) = value;
}

#undef UNCHECKED

}  // namespace

std::vector<FrameworkMethod> NumberMethods() {
  return {
      {"", "ToString(extends value As Int32) As String", Address(&ToText<TypeKind::kInt32, std::int32_t>)},
      {"", "ToString(extends value As Int64) As String", Address(&ToText<TypeKind::kInt64, std::int64_t>)},
      {"", "ToString(extends value As UInt32) As String", Address(&ToText<TypeKind::kUInt32, std::uint32_t>)},
      {"", "ToString(extends value As UInt64) As String", Address(&ToText<TypeKind::kUInt64, std::uint64_t>)},
      {"", "ToString(extends value As Single) As String", Address(&ToText<TypeKind::kSingle, float>)},
      {"", "ToString(extends value As Double) As String", Address(&ToText<TypeKind::kDouble, double>)},
      {"", "ToString(extends value As Currency) As String", Address(&ToText<TypeKind::kCurrency, std::int64_t>)},
      {"", "ToString(extends value As Boolean) As String", Address(&ToText<TypeKind::kBoolean, std::uint8_t>)},
      {"", "ToString(extends value As Color) As String", Address(&ToText<TypeKind::kColor, std::uint32_t>)},
      {"", "Str(value As Int64) As String", Address(&ToText<TypeKind::kInt64, std::int64_t>)},
      {"", "Str(value As Double) As String", Address(&ToText<TypeKind::kDouble, double>)},
      {"Integer", "FromString(text As String) As Integer", Native<ReadWhole>()},
      {"", "Abs(value As Double) As Double", Address(+[](double x) { return std::abs(x); })},
      {"", "Sqrt(value As Double) As Double", Address(+[](double x) { return std::sqrt(x); })},
      {"", "Sin(value As Double) As Double", Address(+[](double x) { return std::sin(x); })},
      {"", "Cos(value As Double) As Double", Address(+[](double x) { return std::cos(x); })},
      {"", "Floor(value As Double) As Double", Address(+[](double x) { return std::floor(x); })},
      {"", "Ceiling(value As Double) As Double", Address(+[](double x) { return std::ceil(x); })},
      {"", "Round(value As Double) As Double", Address(+[](double x) { return std::round(x); })},
      {"", "Min(a As Double, b As Double) As Double", Address(+[](double a, double b) { return std::min(a, b); })},
      {"", "Max(a As Double, b As Double) As Double", Address(+[](double a, double b) { return std::max(a, b); })},
      {"Color", "RGB(red As Integer, green As Integer, blue As Integer, alpha As Integer = 0) As Color",
       Address(&MakeColor)},
      {"Color", "Black As Color", Address(+[] { return std::uint32_t{0x000000}; })},
      {"Color", "White As Color", Address(+[] { return std::uint32_t{0xFFFFFF}; })},
      {"Color", "Red As Color", Address(+[] { return std::uint32_t{0xFF0000}; })},
      {"Color", "Green As Color", Address(+[] { return std::uint32_t{0x00FF00}; })},
      {"Color", "Blue As Color", Address(+[] { return std::uint32_t{0x0000FF}; })},
      {"", "Red(extends value As Color) As Integer", Address(&PartOf<16>)},
      {"", "Green(extends value As Color) As Integer", Address(&PartOf<8>)},
      {"", "Blue(extends value As Color) As Integer", Address(&PartOf<0>)},
      {"", "Alpha(extends value As Color) As Integer", Address(&PartOf<24>)},
  };
}

std::vector<FrameworkMethod> PointerMethods() {
  return {
      {"", "Int32(extends p As Ptr, offset As Integer) As Int32", Address(&ReadAt<std::int32_t>)},
      {"", "Int64(extends p As Ptr, offset As Integer) As Int64", Address(&ReadAt<std::int64_t>)},
      {"", "UInt32(extends p As Ptr, offset As Integer) As UInt32", Address(&ReadAt<std::uint32_t>)},
      {"", "UInt64(extends p As Ptr, offset As Integer) As UInt64", Address(&ReadAt<std::uint64_t>)},
      {"", "Double(extends p As Ptr, offset As Integer) As Double", Address(&ReadAt<double>)},
      {"", "Int32(extends p As Ptr, offset As Integer, assigns value As Int32)", Address(&WriteAt<std::int32_t>)},
      {"", "Int64(extends p As Ptr, offset As Integer, assigns value As Int64)", Address(&WriteAt<std::int64_t>)},
      {"", "UInt32(extends p As Ptr, offset As Integer, assigns value As UInt32)", Address(&WriteAt<std::uint32_t>)},
      {"", "UInt64(extends p As Ptr, offset As Integer, assigns value As UInt64)", Address(&WriteAt<std::uint64_t>)},
      {"", "Double(extends p As Ptr, offset As Integer, assigns value As Double)", Address(&WriteAt<double>)},
  };
}

namespace {

// Returns the content of a Variant as a T. The native form of a Variant is an object or a box.
template <TypeKind kKind, class T>
T HeldAs(REALobjectStruct* variant) {
  T native{};
  try {
    const Value value = FromVariant({kVariantType, Retained<RefCounted>(variant)}, {kKind});
    if constexpr (kKind == TypeKind::kString) Retain(value.Reference());
    WriteNative(value, &native);
  } catch (const XojoException& exception) {
    Raise(exception.Raised().className, exception.Raised().message);
  }
  return native;
}

std::uint8_t IsNull(REALobjectStruct* variant) { return variant == nullptr ? 1 : 0; }

}  // namespace

std::vector<FrameworkMethod> VariantMethods() {
  return {
      {"", "StringValue(extends v As Variant) As String", Address(&HeldAs<TypeKind::kString, REALstringStruct*>)},
      {"", "IntegerValue(extends v As Variant) As Integer", Address(&HeldAs<TypeKind::kInt64, std::int64_t>)},
      {"", "Int32Value(extends v As Variant) As Int32", Address(&HeldAs<TypeKind::kInt32, std::int32_t>)},
      {"", "Int64Value(extends v As Variant) As Int64", Address(&HeldAs<TypeKind::kInt64, std::int64_t>)},
      {"", "UInt32Value(extends v As Variant) As UInt32", Address(&HeldAs<TypeKind::kUInt32, std::uint32_t>)},
      {"", "UInt64Value(extends v As Variant) As UInt64", Address(&HeldAs<TypeKind::kUInt64, std::uint64_t>)},
      {"", "DoubleValue(extends v As Variant) As Double", Address(&HeldAs<TypeKind::kDouble, double>)},
      {"", "SingleValue(extends v As Variant) As Single", Address(&HeldAs<TypeKind::kSingle, float>)},
      {"", "BooleanValue(extends v As Variant) As Boolean", Address(&HeldAs<TypeKind::kBoolean, std::uint8_t>)},
      {"", "CurrencyValue(extends v As Variant) As Currency", Address(&HeldAs<TypeKind::kCurrency, std::int64_t>)},
      {"", "ColorValue(extends v As Variant) As Color", Address(&HeldAs<TypeKind::kColor, std::uint32_t>)},
      {"", "IsNull(extends v As Variant) As Boolean", Address(&IsNull)},
  };
}

}  // namespace host
