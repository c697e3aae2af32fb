// The method ConsoleExecuteZKT: starts another program without a shell and does not wait for it.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Starts the program at `path` with the first 64 elements of each array, as UTF-8, as its arguments and its whole
// environment. Nil is an empty array. The path is not added to the arguments: by convention, the first element is the
// program's own name. Everything is borrowed. Returns the process id, or -1 if no process can be created. The caller
// must reap the child. A program that cannot be run results in the child's exit status 1. Raises nothing.
std::int64_t ConsoleExecuteZKT(REALstring path, _REALarrayString* arguments, _REALarrayString* environment);

// The same with a folder item, whose path is decomposed.
std::int64_t ConsoleExecuteZKTf(REALfolderItem path, _REALarrayString* arguments, _REALarrayString* environment);

}  // namespace zkt
