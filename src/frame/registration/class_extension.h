// Turning the methods of a class extension into global extension methods, by rewriting their declarations.
#pragma once

#include <cstdint>
#include <memory>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Says in the log that rows are left out because memory is out.
void LogFailedAllocation();

// The declaration with the extended object as first parameter: "Draw(x as integer)" becomes
// "Draw(extends ref as Graphics, x as integer)". Null when memory is out.
std::unique_ptr<char[]> AddClassParameter(const char* declaration, const char* className);

// How many methods the extension becomes: one for each function and one for each setter.
std::uint64_t CountExtensionMethods(const REALclassDefinition& extension);

// Writes the converted methods to `destination` from `index` on and gives the index behind the last one. A row whose
// declaration cannot be rewritten is left out, which is logged. The new declarations are never freed: the host keeps
// them.
std::uint64_t CopyMethods(const REALclassDefinition& extension, REALmethodDefinition* destination, std::uint64_t index);

}  // namespace zkt
