// Converts failures to Xojo exceptions. The host throws a raised exception only after the native function returns, so
// raise the exception and then return a neutral value immediately.
#pragma once

#include <cstdint>
#include <exception>
#include <utility>

namespace zkt {

// Raises an instance of the host class `className`, or of "RuntimeException" if the host does not have that class.
// `message` is a UTF-8 string or null. Does nothing on a host that cannot create or raise exceptions. The last
// parameter is reserved.
void RaiseException(const char* className, const char* message, std::int64_t errorNumber = 0, std::int64_t = 0);

// Raises "OutOfBoundsException" for the index `value` into an array of `count` elements. The other parameters are
// reserved.
void RaiseOutOfBoundsException(std::int64_t value, std::int64_t count, std::int64_t = 0, std::int64_t = 0,
                               std::int64_t = 0);

// Raises the host exception that corresponds to a standard library exception.
void RaiseRuntimeException(const std::exception& exception);

// Raises the host exception for a C++ exception that is not derived from std::exception.
void RaiseUnnamedException();

// Does the same as RaiseUnnamedException, but rethrows thread cancellation. Call this only in a catch-all handler.
void RaiseUnlessThreadEnds();

// Runs the body of a native function. If the body throws a C++ exception, converts it to a host exception and returns
// `Result()`. Thread cancellation passes through, but no other C++ exception reaches the host.
template <class Body>
auto TranslateExceptions(Body&& body) -> decltype(body()) {
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
