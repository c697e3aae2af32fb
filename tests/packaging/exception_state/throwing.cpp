// A program whose exceptions are caught inside the library in catching.cpp. The exception state of the program's own
// C++ library must stay correct.
#include <dlfcn.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

int gFailures = 0;

void Expect(bool isRight, const char* what) {
  if (isRight) return;
  std::fprintf(stderr, "not true: %s\n", what);
  ++gFailures;
}

void Throw() { throw std::runtime_error("from the process"); }

}  // namespace

int main(int, char** arguments) {
  void* const library = ::dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
  const auto catches =
      reinterpret_cast<bool (*)(void (*)())>(library != nullptr ? ::dlsym(library, "Catches") : nullptr);
  if (catches == nullptr) return std::fprintf(stderr, "%s\n", ::dlerror()), 1;
  for (void (*const call)() : {&Throw, static_cast<void (*)()>(nullptr)}) {
    for (int i = 0; i < 3; ++i) Expect(catches(call), "the exception is caught");
    Expect(std::uncaught_exceptions() == 0, "no exception is in flight");
    Expect(std::current_exception() == nullptr, "no exception is being handled");
  }
  try {
    throw 5;
  } catch (int) {
    catches(&Throw);
    Expect(std::current_exception() != nullptr, "an exception is still being handled");
    try {
      throw;
    } catch (int again) {
      Expect(again == 5, "it is the same exception");
    }
  }
  Expect(std::uncaught_exceptions() == 0, "no exception is in flight at the end");
  return gFailures;
}
