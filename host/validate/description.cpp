// Values for people.
#include <algorithm>
#include <cstdio>

#include "core/arrays.h"
#include "core/dates.h"
#include "core/strings.h"
#include "declarations/conversion.h"
#include "validate/made_values.h"

namespace host::validate {

namespace {

constexpr std::size_t kMostBytes = 160;
constexpr std::int64_t kMostElements = 8;

std::string InHex(const char* format, unsigned long long number) {
  char text[32];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  std::snprintf(text, sizeof text, format, number);
#pragma GCC diagnostic pop
  return text;
}

// Printable ASCII as it is, every other byte escaped.
std::string Escaped(std::string_view bytes) {
  std::string text;
  for (const char c : bytes.substr(0, kMostBytes)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && byte < 0x7F && c != '"' && c != '\\')
      text += c;
    else
      text += InHex("\\x%02llX", byte);
  }
  return text + (bytes.size() > kMostBytes ? "..." : "");
}

std::string DescribeText(const REALstringStruct* text) {
  return "\"" + Escaped(text->View()) + "\" (" + std::to_string(text->length) + " bytes, encoding " +
         InHex("0x%llX", text->encoding) + ")";
}

std::string DescribeArray(const Array* array) {
  std::string text = std::to_string(array->count) + " elements {";
  for (std::int64_t i = 0; i < std::min(array->count, kMostElements); ++i)
    text += (i > 0 ? ", " : "") + Describe(GetElement(array, i));
  return text + (array->count > kMostElements ? ", ...}" : "}");
}

std::string DescribeObject(REALobjectStruct* object) {
  if (IsDate(object->type)) return object->type->name + " " + DateText(object);
  std::string text = object->type->name;
  if (object->properties->empty()) return text;
  text += " {";
  for (const auto& [name, value] : *object->properties)
    text += (text.back() == '{' ? "" : ", ") + name + ": " + Describe(value);
  return text + "}";
}

}  // namespace

std::string Describe(const Value& value) {
  if (value.type.basic == Basic::kNothing) return "nothing";
  if (!value.type.IsReference()) return Show(value);
  if (value.Reference() == nullptr) return "nil";
  const CountedKind* const kind = value.Reference()->kind;
  if (kind == &kStringKind) return DescribeText(static_cast<const REALstringStruct*>(value.Reference()));
  if (kind == &kArrayKind) return DescribeArray(static_cast<const Array*>(value.Reference()));
  if (kind == &kObjectKind) return DescribeObject(static_cast<REALobjectStruct*>(value.Reference()));
  return "a destroyed value";
}

}  // namespace host::validate
