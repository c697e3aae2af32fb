// The ConsoleExecuteZKT method, which starts another program without a shell and does not wait for it to end.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Starts the program at `path`. The first 64 elements of `arguments` and of `environment`, as UTF-8, become the
// program's arguments and its entire environment. A nil array counts as empty. The path is not added to the arguments.
// By convention, the first argument is the program's name. All parameters are borrowed. Returns the process id, or -1
// if no process can be created. The caller must reap the child. If the program cannot be run, the child exits with
// status 1. Raises no exceptions.
std::int64_t ConsoleExecuteZKT(REALstring path, _REALarrayString* arguments, _REALarrayString* environment);

// Does the same with a folder item. Tries the decomposed path first, then the path as given.
std::int64_t ConsoleExecuteZKTf(REALfolderItem path, _REALarrayString* arguments, _REALarrayString* environment);

}  // namespace zkt
