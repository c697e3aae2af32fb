// The debug switch, the log line writer, and traces. Names such as LogMessageX are fixed by the host's interface. A
// trace takes a list of values instead of a format string. The value types select the printf format, so width and
// signedness always match.
#pragma once

#include <array>
#include <atomic>
#include <concepts>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "frame/contract/plugin_interface.h"

namespace zkt {

inline constexpr const char* kTracePrefix = "ZKT Debug: ";

// The process-wide debug switch, 0 or 1. The ZKTDEBUG environment variable and the `Debugging` property set it.
inline std::atomic<std::uint8_t> DebuggingEnabled{0};

inline bool IsDebugging() { return DebuggingEnabled.load(std::memory_order_relaxed) == 1; }

// Accessors of the `Debugging` property. Switching it from off to on logs a line. All other assignments log nothing.
REALboolean getDebugging();
void setDebugging(REALboolean enabled);

// Formats its arguments like printf and writes one line to the system log, even while debugging is off. Truncates the
// line to 4095 bytes.
void LogMessageX(const char* format, ...) __attribute__((format(printf, 1, 2)));

namespace trace_detail {

// Returns the printf conversion for a type, or an empty string if there is none.
template <class Value>
consteval std::string_view ConversionFor() {
  if constexpr (std::same_as<Value, const char*> || std::same_as<Value, char*>)
    return "%s";
  else if constexpr (std::is_pointer_v<Value>)
    return "%p";
  else if constexpr (std::same_as<Value, double>)
    return "%f";
  else if constexpr (!std::is_integral_v<Value>)
    return {};
  else if constexpr (sizeof(Value) == 8)
    return std::is_signed_v<Value> ? "%lld" : "%llu";
  else if constexpr (std::is_signed_v<Value> || std::same_as<Value, bool>)
    return "%d";
  else
    return "%u";
}

// Returns whether a trace accepts values of these types. Only a few combinations are allowed, because scripts that
// parse the log rely on their formats.
template <class... Values>
consteval bool IsTraceable() {
  constexpr std::size_t count = sizeof...(Values);
  if constexpr (count == 0) {
    return true;
  } else {
    constexpr std::array<std::string_view, count> conversions = {ConversionFor<Values>()...};
    constexpr std::string_view first = conversions[0];
    if (count == 2 && first == "%p" && conversions[1] == "%s") return true;
    for (const std::string_view conversion : conversions)
      if (conversion.empty() || conversion != first) return false;
    return count <= 2 || (first == "%lld" && (count == 3 || count == 6 || count == 7));
  }
}

// Builds the printf format: "%s%s" for the prefix and the label, then one conversion per value, as in "%s%s %lld,
// %lld".
template <class... Values>
consteval auto MakeFormat() {
  std::array<char, 8 + 6 * sizeof...(Values)> format{};
  std::size_t length = 0;
  const auto append = [&](std::string_view text) {
    for (const char c : text) format[length++] = c;
  };
  append("%s%s");
  constexpr std::array<std::string_view, sizeof...(Values)> conversions = {ConversionFor<Values>()...};
  std::string_view previous;
  for (const std::string_view conversion : conversions) {
    append(previous.empty() ? " " : previous == conversion ? ", " : ": ");
    append(conversion);
    previous = conversion;
  }
  return format;
}

template <class... Values>
inline constexpr auto kFormat = MakeFormat<Values...>();

// Converts a 64-bit integer to the type that matches %lld or %llu on every platform.
template <class Value>
auto AsPrintfArgument(Value value) {
  if constexpr (std::is_integral_v<Value> && sizeof(Value) == 8)
    return static_cast<std::conditional_t<std::is_signed_v<Value>, long long, unsigned long long>>(value);
  else
    return value;
}

}  // namespace trace_detail

template <class... Values>
concept Traceable = trace_detail::IsTraceable<Values...>();

// Logs a label and values while debugging is on. While debugging is off, a call costs one predictable branch. Strings
// must be zero-terminated. An unsupported combination of value types does not compile.
template <class... Values>
requires Traceable<Values...>
void Trace(const char* label, Values... values) {
  if (!IsDebugging()) [[likely]]
    return;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  LogMessageX(trace_detail::kFormat<Values...>.data(), kTracePrefix, label, trace_detail::AsPrintfArgument(values)...);
#pragma GCC diagnostic pop
}

}  // namespace zkt
