// The debug switch, the log line writer, and traces. Names such as LogMessageX are fixed by the host's interface. A
// trace is a list of values, not a format string: the types select the printf format, so width and sign always match.
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

// The process-wide debug switch, 0 or 1. Set by the environment variable ZKTDEBUG and the property `Debugging`.
inline std::atomic<std::uint8_t> DebuggingEnabled{0};

inline bool IsDebugging() { return DebuggingEnabled.load(std::memory_order_relaxed) == 1; }

// Accessors of the property `Debugging`. A change from off to on logs a line. All other assignments are silent.
REALboolean getDebugging();
void setDebugging(REALboolean enabled);

// Formats with the printf rules and writes one line to the system log, whether or not debugging is on. Truncates output
// after 4095 bytes.
void LogMessageX(const char* format, ...) __attribute__((format(printf, 1, 2)));

namespace trace_detail {

// Returns the printf conversion of a type, or an empty text if it has none.
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

// The lists of values that a trace may show. Readers of the log and their scripts know this short list.
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

// Builds "%s%s" for prefix and label, followed by the values: "%s%s %lld, %lld".
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

// Converts 64-bit integers to the one type that matches %lld or %llu on every platform.
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

// Logs a label and values while debugging is on. Costs one predictable branch while it is off. Text is zero-terminated.
// A list of values without a format does not compile.
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
