// What a library shows to the linker.
#pragma once

#include <string>
#include <vector>

namespace host::validate {

// The names that an ELF library of this machine's kind defines for others. Throws std::runtime_error for other files.
std::vector<std::string> ExportsOf(const std::string& library);

}  // namespace host::validate
