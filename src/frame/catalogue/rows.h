// Creates the rows of the declaration tables. A row does not compile if its declaration and its native function differ
// in the number or types of the parameters or in the result type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/catalogue/declaration_syntax.h"
#include "frame/catalogue/type_names.h"
#include "frame/contract/plugin_interface.h"

namespace zkt {

// The arguments that a native function receives.
enum class CallKind {
  kDeclaredOnly,  // the declared parameters; for module methods, shared methods, global methods and delegates
  kObjectFirst,   // the object, then the declared parameters; for methods of classes and class extensions
};

namespace rows_detail {

template <class Argument>
constexpr bool MatchesParameter(const DeclaredParameter& parameter) {
  using Pointee = std::remove_pointer_t<Argument>;
  if (parameter.type.isArray) {
    if constexpr (std::is_pointer_v<Argument> && std::is_class_v<Pointee>)
      return !parameter.isByRef && ArrayStandsFor<Pointee>(parameter.type.name);
    else
      return false;
  }
  if (parameter.isByRef) {
    if constexpr (std::is_pointer_v<Argument> && !std::is_void_v<Pointee>)
      return StandsFor<Pointee>(parameter.type.name);
    else
      return false;
  }
  return StandsFor<Argument>(parameter.type.name);
}

constexpr DeclaredParameter AsParameter(const DeclaredType& type) {
  DeclaredParameter parameter;
  parameter.type = type;
  return parameter;
}

template <class Result>
constexpr bool MatchesResult(const DeclaredType& type) {
  if constexpr (std::is_void_v<Result>)
    return type.name.empty();
  else
    return !type.name.empty() && MatchesParameter<Result>(AsParameter(type));
}

template <class... Arguments>
constexpr bool MatchesParameters(const ParsedDeclaration& declaration) {
  [[maybe_unused]] std::size_t next = 0;
  return declaration.parameterCount == sizeof...(Arguments) &&
         (MatchesParameter<Arguments>(declaration.parameters[next++]) && ...);
}

template <class Signature>
struct SignatureCheck;

template <class Result, class... Arguments>
struct SignatureCheck<Result(Arguments...)> {
  template <CallKind kind>
  static constexpr bool Matches(const ParsedDeclaration& declaration) {
    if constexpr (kind == CallKind::kObjectFirst)
      return WithoutObject<Arguments...>::Matches(declaration) && MatchesResult<Result>(declaration.result);
    else
      return MatchesParameters<Arguments...>(declaration) && MatchesResult<Result>(declaration.result);
  }

  template <class...>
  struct WithoutObject {
    static constexpr bool Matches(const ParsedDeclaration&) { return false; }
  };
  template <class... Others>
  struct WithoutObject<REALobject, Others...> {
    static constexpr bool Matches(const ParsedDeclaration& declaration) {
      return MatchesParameters<Others...>(declaration);
    }
  };
};

// Intentionally not constexpr: calling this function at compile time is an error, and the compiler's message shows its
// name.
inline void DeclarationDisagreesWithNativeFunction() {}

}  // namespace rows_detail

// Returns whether a declaration is well formed and matches a native function with this signature.
template <CallKind kind, class Signature>
constexpr bool MatchesDeclaration(std::string_view text) {
  const ParsedDeclaration declaration = ParseDeclaration(text);
  return declaration.IsValid() && rows_detail::SignatureCheck<Signature>::template Matches<kind>(declaration);
}

// A declaration that has been checked against a signature.
template <CallKind kind, class Signature>
class CheckedDeclaration {
 public:
  consteval CheckedDeclaration(const char* text) : text_(text) {
    if (!MatchesDeclaration<kind, Signature>(text)) rows_detail::DeclarationDisagreesWithNativeFunction();
  }

  constexpr const char* Text() const { return text_; }

 private:
  const char* text_;
};

// Prevents the compiler from deducing the signature from the declaration.
template <CallKind kind, class Signature>
using DeclarationOf = std::type_identity_t<CheckedDeclaration<kind, Signature>>;

// Creates a method of a module, a shared method of a class, or a global method.
template <class Result, class... Arguments>
REALmethodDefinition Method(DeclarationOf<CallKind::kDeclaredOnly, Result(Arguments...)> declaration,
                            Result (*function)(Arguments...), std::uint32_t flags) {
  return {reinterpret_cast<void*>(function), nullptr, declaration.Text(), flags, 0, nullptr};
}

// Creates a method of a class or a class extension. The native function receives the object first.
template <class Result, class... Arguments>
REALmethodDefinition ObjectMethod(DeclarationOf<CallKind::kObjectFirst, Result(Arguments...)> declaration,
                                  Result (*function)(Arguments...), std::uint32_t flags) {
  return {reinterpret_cast<void*>(function), nullptr, declaration.Text(), flags, 0, nullptr};
}

// Creates a delegate type. `Signature` is the signature with which native code calls the delegate, without the
// parameter for the delegate itself.
template <class Signature>
REALdelegate Delegate(DeclarationOf<CallKind::kDeclaredOnly, Signature> declaration, std::uint32_t flags) {
  return {declaration.Text(), flags, 0, nullptr};
}

// The name of a property's type, checked against the C++ type of its value.
template <class Value>
class CheckedType {
 public:
  consteval CheckedType(const char* name) : name_(name) {
    if (!StandsFor<Value>(name)) rows_detail::DeclarationDisagreesWithNativeFunction();
  }

  constexpr const char* Name() const { return name_; }

 private:
  const char* name_;
};

namespace rows_detail {

template <class Value>
REALproperty PropertyRow(const char* name, CheckedType<Value> type, void* getter, void* setter, std::int64_t parameter,
                         std::uint32_t flags) {
  return {.group = nullptr,
          .name = name,
          .type = type.Name(),
          .flags = flags,
          .getter = getter,
          .setter = setter,
          .parameter = parameter,
          .editor = nullptr,
          .enumCount = 0,
          .enumEntries = nullptr,
          .attributeCount = 0,
          .attributes = nullptr};
}

}  // namespace rows_detail

// A field of the instance data: its type and its offset.
template <class Type>
struct InstanceField {
  std::size_t offset;
};
#define ZKT_FIELD(Data, field) (::zkt::InstanceField<decltype(Data::field)>{offsetof(Data, field)})

enum FieldAccess : bool { kReadOnly = false, kReadWrite = true };

// Creates a property for a field of the instance data. The host accesses the field directly, which it cannot do if the
// type is Double.
template <class Type>
REALproperty FieldProperty(const char* name, std::type_identity_t<CheckedType<Type>> type, InstanceField<Type> field,
                           FieldAccess access, std::uint32_t flags) {
  static_assert(!std::is_same_v<Type, double>, "DoubleNeedsAccessorsOfOurOwn");
  return rows_detail::PropertyRow<Type>(name, type, kStandardAccessor,
                                        access == kReadWrite ? kStandardAccessor : nullptr,
                                        static_cast<std::int64_t>(field.offset), flags);
}

// Creates a class property with accessor functions, which receive the object and `parameter` as their first two
// arguments.
template <class Value>
REALproperty AccessorProperty(const char* name, std::type_identity_t<CheckedType<Value>> type,
                              Value (*getter)(REALobject, std::int64_t),
                              std::type_identity_t<void (*)(REALobject, std::int64_t, Value)> setter,
                              std::uint32_t flags, std::int64_t parameter = 0) {
  return rows_detail::PropertyRow<Value>(name, type, reinterpret_cast<void*>(getter), reinterpret_cast<void*>(setter),
                                         parameter, flags);
}

// Creates a property of a module or a shared property of a class. The accessors receive no object. The property is
// read-only if the setter is null.
template <class Value>
REALproperty SharedProperty(const char* name, std::type_identity_t<CheckedType<Value>> type, Value (*getter)(),
                            std::type_identity_t<void (*)(Value)> setter, std::uint32_t flags) {
  return rows_detail::PropertyRow<Value>(name, type, reinterpret_cast<void*>(getter), reinterpret_cast<void*>(setter),
                                         0, flags);
}

}  // namespace zkt
