// The GetQOSClassZKT and SetQOSClassZKT methods, which read and set the urgency of the calling thread's work, from 1 to
// 5.
#pragma once

#include <cstdint>

namespace zkt {

// Returns 1 for background, 2 for utility, 3 for default or for a thread without a class, 4 for user-initiated, 5 for
// user-interactive, and 0 if the system cannot report the class.
std::int64_t GetQOSClass();

// Sets the calling thread's class, from 1 to 5. Any other number means the default class. Returns 0 on success, or the
// system's error number.
std::int64_t SetQOSClass(std::int64_t QOS);

}  // namespace zkt
