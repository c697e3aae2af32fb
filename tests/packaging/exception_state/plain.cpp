// A program that has no C++ library of its own and loads the library in catching.cpp.
#include <dlfcn.h>
#include <stdio.h>

int main(int, char** arguments) {
  void* const library = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
  const auto catches = reinterpret_cast<bool (*)(void (*)())>(library != nullptr ? dlsym(library, "Catches") : nullptr);
  if (catches == nullptr) return fprintf(stderr, "%s\n", dlerror()), 1;
  if (dlopen("libstdc++.so.6", RTLD_NOW | RTLD_NOLOAD) != nullptr) return fprintf(stderr, "there is one\n"), 1;
  return catches(nullptr) && catches(nullptr) && !catches([] {}) ? 0 : 1;
}
