// Turning failures into exceptions of the host language.
// The host delivers a raised exception when the native function returns: raise, then return at once with a neutral
// value.
#pragma once

#include <cstdint>
#include <exception>
#include <utility>

namespace zkt {

// Raises an instance of the host class `className`, or of "RuntimeException" when the host does not know that class.
// `message` is UTF-8 text or null. Nothing happens on a host that cannot make or raise exceptions.
// The last parameter is reserved.
void RaiseException(const char* className, const char* message, std::int64_t errorNumber = 0, std::int64_t = 0);

// Raises "OutOfBoundsException" for an index `value` into `count` elements. The last parameters are reserved.
void RaiseOutOfBoundsException(std::int64_t value, std::int64_t count, std::int64_t = 0, std::int64_t = 0,
                               std::int64_t = 0);

// Raises the host exception that stands for a standard library exception.
void RaiseRuntimeException(const std::exception& exception);

// Raises the host exception for a C++ exception that is no std::exception.
void RaiseUnnamedException();

// The same inside a handler of everything; the end of the thread is passed on.
void RaiseUnlessThreadEnds();

// The guard at the boundary: runs the body of a native function, and turns a C++ exception into the host's, with
// `Result()` as the value that the host gets. Nothing of C++ may unwind into the host but the end of its thread.
template <class Body>
auto Guarded(Body&& body) -> decltype(body()) {
  using Result = decltype(body());
  try {
    return std::forward<Body>(body)();
  } catch (const std::exception& exception) {
    RaiseRuntimeException(exception);
  } catch (...) {
    RaiseUnlessThreadEnds();
  }
  return Result();
}

}  // namespace zkt
