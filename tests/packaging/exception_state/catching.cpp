// A library that contains its own C++ library, as the packaged Linux libraries do.
#include <exception>
#include <stdexcept>

// Returns whether the call throws an exception. If `call` is null, this function throws one itself.
extern "C" __attribute__((visibility("default"))) bool Catches(void (*call)()) {
  try {
    if (call == nullptr) throw std::runtime_error("from inside");
    call();
  } catch (const std::exception&) {
    return true;
  }
  return false;
}
