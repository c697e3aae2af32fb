// The classes of Xojo's framework, and the methods outside them that scripts can use: methods of strings and numbers,
// shared methods, and global functions. Methods are declared in the same form as a plug-in's methods.
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/arrays.h"
#include "core/objects.h"

namespace host {

struct FrameworkMethod {
  const char* owner;        // class or module of a shared method; empty for global methods and extension methods
  const char* declaration;  // in Xojo's syntax
  void* function;
};

std::vector<FrameworkMethod> FrameworkMethods();

// The framework methods, grouped by subject.
std::vector<FrameworkMethod> TextMethods();
std::vector<FrameworkMethod> NumberMethods();
std::vector<FrameworkMethod> PointerMethods();
std::vector<FrameworkMethod> VariantMethods();
std::vector<FrameworkMethod> TextFileMethods();
std::vector<FrameworkMethod> FolderMethods();
std::vector<FrameworkMethod> DateMethods();

// The host's own classes, grouped by subject. Objects point to them until the process ends, so they are never
// destroyed.
std::vector<ObjectClass*> ExceptionClasses();
std::vector<ObjectClass*> DateClasses();
std::vector<ObjectClass*> FolderItemClasses();
std::vector<ObjectClass*> GraphicsClasses();
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

// The native type of a parameter or result: a std::string becomes a host string, and a bool becomes a byte. The caller
// owns a returned string.
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

// Returns a native function that calls `kFunction`, whose signature may use std::string and bool.
template <auto kFunction>
void* Native() {
  return Address(&framework_detail::Adapter<kFunction>::Call);
}

}  // namespace host
