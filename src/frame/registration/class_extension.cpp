#include "frame/registration/class_extension.h"

#include <cstdio>
#include <cstring>
#include <new>

#include "frame/registration/member_checks.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// Longer declarations are truncated.
constexpr std::size_t kBufferSize = 1000;

using Declaration = std::unique_ptr<char[]>;

Declaration CopyOf(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  Declaration copy(new (std::nothrow) char[size]);
  if (copy)
    std::memcpy(copy.get(), text, size);
  else
    LogFailedAllocation();
  return copy;
}

// Returns the setter's declaration: the assigned value becomes the last parameter, and its type is the former result
// type. For example, "Width(extends ref as Graphics) as Integer" becomes "Width(extends ref as Graphics, assigns value
// as Integer)".
Declaration AddAssignedValue(const char* declaration) {
  char text[kBufferSize] = {};
  const auto lengthUpTo = [&](const char* end) { return static_cast<int>(end - declaration); };
  if (const char* const close = std::strchr(declaration, ')'); close != nullptr) {
    std::snprintf(text, sizeof text, "%.*s, assigns value%s)", lengthUpTo(close), declaration, close + 1);
  } else if (const char* const space = std::strchr(declaration, ' '); space != nullptr) {
    std::snprintf(text, sizeof text, "%.*s(assigns value%s)", lengthUpTo(space), declaration, space);
  } else {
    LogMessageX("%s%s %s", kTracePrefix, "Error: Keine Klammer in der Deklaration", declaration);
    return nullptr;
  }
  return CopyOf(text);
}

std::span<const REALmethodDefinition> MethodsOf(const REALclassDefinition& extension) {
  return Members(extension.methods, extension.methodCount);
}

REALmethodDefinition GlobalMethod(const REALmethodDefinition& row, void* function, const char* declaration) {
  return {function, nullptr, declaration, row.flags | kGlobalScope, row.attributeCount, row.attributes};
}

}  // namespace

void LogFailedAllocation() { LogMessageX("%s%s", kTracePrefix, "Warning: Failed to allocate memory."); }

Declaration AddClassParameter(const char* declaration, const char* className) {
  const char* const text = declaration != nullptr ? declaration : "";
  const char* const end = text + std::strcspn(text, " (");
  const int nameLength = static_cast<int>(end - text);
  const char* const type = ForLog(className);
  char result[kBufferSize] = {};
  if (*end == '(')
    std::snprintf(result, sizeof result, "%.*s(extends ref as %s, %s", nameLength, text, type, end + 1);
  else
    std::snprintf(result, sizeof result, "%.*s(extends ref as %s)%s", nameLength, text, type, end);
  return CopyOf(result);
}

std::uint64_t CountExtensionMethods(const REALclassDefinition& extension) {
  std::uint64_t count = 0;
  for (const REALmethodDefinition& row : MethodsOf(extension))
    count += (row.function != nullptr ? 1u : 0u) + (row.setter != nullptr ? 1u : 0u);
  return count;
}

std::uint64_t CopyMethods(const REALclassDefinition& extension, REALmethodDefinition* destination,
                          std::uint64_t index) {
  for (const REALmethodDefinition& row : MethodsOf(extension)) {
    if (row.function != nullptr) {
      Declaration declaration = AddClassParameter(row.declaration, extension.name);
      if (declaration) destination[index++] = GlobalMethod(row, row.function, declaration.release());
    }
    if (row.setter != nullptr) {
      const Declaration reader = AddClassParameter(row.declaration, extension.name);
      Declaration declaration = reader ? AddAssignedValue(reader.get()) : nullptr;
      if (declaration) destination[index++] = GlobalMethod(row, row.setter, declaration.release());
    }
  }
  return index;
}

}  // namespace zkt
