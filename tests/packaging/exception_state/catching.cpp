// A library with a C++ library of its own inside, as the packaged ones for Linux have it.
#include <exception>
#include <stdexcept>

// Whether an exception comes out of the call, or out of this function for a null one.
extern "C" __attribute__((visibility("default"))) bool Catches(void (*call)()) {
  try {
    if (call == nullptr) throw std::runtime_error("from inside");
    call();
  } catch (const std::exception&) {
    return true;
  }
  return false;
}
