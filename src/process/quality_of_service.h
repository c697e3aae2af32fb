// The methods GetQOSClassZKT and SetQOSClassZKT: how urgent the calling thread's work is, from 1 to 5.
#pragma once

#include <cstdint>

namespace zkt {

// 1 background, 2 utility, 3 default (a thread without a class too), 4 user-initiated, 5 user-interactive; 0 when the
// system does not tell.
std::int64_t GetQOSClass();

// Gives the calling thread a class of that scale; any other number is the default class. Answers 0, or the system's
// error number.
std::int64_t SetQOSClass(std::int64_t QOS);

}  // namespace zkt
