// Raises host exceptions. Nothing here throws a new C++ exception, because exception handlers call these functions.
#include "runtime/exceptions.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>

#include "frame/contract/host_reference.h"
#include "platform/thread_end.h"
#include "runtime/debug_log.h"
#include "runtime/string_builder.h"

namespace zkt {

namespace {

struct Translation {
  const char* hostClass;
  const char* message;
};

template <class Type>
bool Is(const std::exception& exception) {
  return dynamic_cast<const Type*>(&exception) != nullptr;
}

Translation TranslationOf(const std::exception& exception) {
  if (Is<std::bad_alloc>(exception)) return {"OutOfMemoryException", "Failed to allocate memory"};
  if (Is<std::range_error>(exception)) return {"OutOfBoundsException", "C++ reports range error"};
  if (Is<std::out_of_range>(exception)) return {"OutOfBoundsException", "C++ reports range error"};
  if (Is<std::overflow_error>(exception)) return {"OutOfBoundsException", "C++ reports overflow error"};
  if (Is<std::underflow_error>(exception)) return {"OutOfBoundsException", "C++ reports underflow error"};
  return {"RuntimeException", "C++ Exception"};
}

// Returns nil if the message is null or the host cannot build a string. An exception from the host, such as a failed
// allocation, must not replace the one that is about to be raised.
REALstring BuildMessage(const char* message) {
  if (message == nullptr) return nullptr;
  try {
    return BuildUnicodeString(message, static_cast<std::int64_t>(std::strlen(message)), kEncodingUTF8);
  } catch (const std::exception&) {
    return nullptr;
  }
}

}  // namespace

void RaiseException(const char* className, const char* message, std::int64_t errorNumber, std::int64_t) {
  const OwnedString text(BuildMessage(message));
  REALobject instance = REALnewInstance(className);
  if (instance == nullptr) instance = REALnewInstance("RuntimeException");
  const OwnedObject exception(instance);
  if (!exception) return;
  REALSetPropValueString(exception.Get(), "Message", text.Get());
  REALSetPropValueInteger(exception.Get(), "ErrorNumber", errorNumber);
  REALRaiseException(exception.Get());
}

void RaiseOutOfBoundsException(std::int64_t value, std::int64_t count, std::int64_t, std::int64_t, std::int64_t) {
  constexpr std::size_t kTextSize = 205;
  const std::unique_ptr<char[]> text(new (std::nothrow) char[kTextSize]());
  if (!text) {
    RaiseException("OutOfBoundsException", "Out of Bounds");
    return;
  }
  const auto last = static_cast<std::int64_t>(static_cast<std::uint64_t>(count) - 1);
  // The two strings that could describe the parameter are empty, but the spaces around them remain in the message.
  std::snprintf(text.get(), kTextSize,
                "The parameter %s %s%s is too %s. Range is %" PRId64 " to %" PRId64 ", but value is %" PRId64 ".",
                "index", "", "", value < 0 ? "small" : "big", std::int64_t{0}, last, value);
  RaiseException("OutOfBoundsException", text.get());
}

void RaiseRuntimeException(const std::exception& exception) {
  const auto [hostClass, message] = TranslationOf(exception);
  const char* const what = exception.what();
  const bool named = what != nullptr && *what != '\0';
  const std::size_t size = std::strlen(message) + (named ? 2 + std::strlen(what) : 1) + 1;
  const std::unique_ptr<char[]> text(new (std::nothrow) char[size]);
  if (text) std::snprintf(text.get(), size, "%s%s%s", message, named ? ": " : ".", named ? what : "");
  RaiseException(hostClass, text ? text.get() : message);
}

void RaiseUnnamedException() {
  Trace("Unnamed C++ Exception.");
  RaiseException("RuntimeException", "Sorry, but there was an unnamed C++ Exception.");
}

__attribute__((no_sanitize("null"))) void RaiseUnlessThreadEnds() {
  try {
    throw;
  } catch (const ThreadEnd&) {
    throw;
  } catch (...) {
    RaiseUnnamedException();
  }
}

}  // namespace zkt
