// The methods GetQOSClassZKT and SetQOSClassZKT: the urgency of the calling thread's work, from 1 to 5.
#pragma once

#include <cstdint>

namespace zkt {

// Returns 1 for background, 2 utility, 3 default (also for a thread without a class), 4 user-initiated, 5
// user-interactive, and 0 if the system cannot report it.
std::int64_t GetQOSClass();

// Gives the calling thread a class of that scale. Any other number means the default class. Returns 0 or the system's
// error number.
std::int64_t SetQOSClass(std::int64_t QOS);

}  // namespace zkt
