// The method ConsoleExecuteZKT: starting another program, without a shell and without waiting for it.
#pragma once

#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Starts the program at `path` with the first 64 elements of each array, as UTF-8, for its arguments and its whole
// environment; nil is an empty array. The path is no argument by itself: the first element is the program's own name,
// by convention. Everything is borrowed. Answers the process id, -1 when no process can be made; the caller has to reap
// the child. A program that cannot be run shows in the child's exit status, 1. Raises nothing.
std::int64_t ConsoleExecuteZKT(REALstring path, _REALarrayString* arguments, _REALarrayString* environment);

// The same with a folder item; its path is decomposed.
std::int64_t ConsoleExecuteZKTf(REALfolderItem path, _REALarrayString* arguments, _REALarrayString* environment);

}  // namespace zkt
