// Converts the methods of a class extension to global extension methods by rewriting their declarations.
#pragma once

#include <cstdint>
#include <memory>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Logs that memory could not be allocated.
void LogFailedAllocation();

// Returns the declaration with the extended object as the first parameter. For example, "Draw(x as integer)" becomes
// "Draw(extends ref as Graphics, x as integer)". Returns null if memory runs out.
std::unique_ptr<char[]> AddClassParameter(const char* declaration, const char* className);

// Returns the number of methods after the conversion: one for each function and one for each setter.
std::uint64_t CountExtensionMethods(const REALclassDefinition& extension);

// Writes the converted methods to `destination`, starting at `index`, and returns the index after the last method. Logs
// and omits a row whose declaration cannot be rewritten. The new declarations are never freed, because the host keeps
// pointers to them.
std::uint64_t CopyMethods(const REALclassDefinition& extension, REALmethodDefinition* destination, std::uint64_t index);

}  // namespace zkt
