// What Xojo's framework offers to scripts besides its classes: methods of texts and numbers, shared methods, functions.
// They are declared as a plug-in declares its own.
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/arrays.h"
#include "core/objects.h"

namespace host {

struct FrameworkMethod {
  const char* owner;        // of a shared method; empty for a global one, and for one that extends its first parameter
  const char* declaration;  // as in Xojo
  void* function;
  double since = 0;  // the host's versions that have it
  double before = 1.0e9;
};

std::vector<FrameworkMethod> FrameworkMethods();

// The parts of it.
std::vector<FrameworkMethod> TextMethods();
std::vector<FrameworkMethod> NumberMethods();
std::vector<FrameworkMethod> PointerMethods();
std::vector<FrameworkMethod> VariantMethods();
std::vector<FrameworkMethod> TextFileMethods();
std::vector<FrameworkMethod> FolderMethods();
std::vector<FrameworkMethod> DateMethods();

// Classes that only scripts use.
std::vector<ObjectClass*> TextClasses();
std::vector<ObjectClass*> TextFileClasses();

namespace framework_detail {

template <class T>
decltype(auto) FromNative(T value) {
  if constexpr (std::is_same_v<T, const REALstringStruct*>)
    return ToUTF8(value);
  else
    return value;
}

// The native type of a parameter or result: text is a string of the host. The caller owns a returned string.
template <class T>
using NativeOf = std::conditional_t<std::is_same_v<std::remove_cvref_t<T>, std::string>, const REALstringStruct*,
                                    std::conditional_t<std::is_same_v<T, bool>, std::uint8_t, T>>;

template <auto kFunction>
struct Adapter;

template <class Result, class... Parameters, Result (*kFunction)(Parameters...)>
struct Adapter<kFunction> {
  static NativeOf<Result> Call(NativeOf<Parameters>... arguments) {
    if constexpr (std::is_void_v<Result>)
      kFunction(FromNative(arguments)...);
    else if constexpr (std::is_same_v<Result, std::string>)
      return MakeString(kFunction(FromNative(arguments)...));
    else
      return kFunction(FromNative(arguments)...);
  }
};

}  // namespace framework_detail

// Wraps a function that uses std::string and bool as a native function.
template <auto kFunction>
void* Native() {
  return Address(&framework_detail::Adapter<kFunction>::Call);
}

}  // namespace host
