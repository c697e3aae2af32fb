// Declaration checks for the members of a class, module or class extension: finds mistakes of the author. Findings are
// only logged. They never prevent registration.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns whether a count contradicts its array or exceeds any plausible limit.
bool BreaksCountRule(std::uint64_t count, const void* array, std::uint64_t limit = 1000);

// Returns the members in an array. The array may be null even if the count is not 0.
template <class Member>
std::span<Member> Members(Member* members, std::uint64_t count) {
  return {members, members != nullptr ? static_cast<std::size_t>(count) : 0};
}

// Returns a text for a log line, "(null)" for null.
const char* ForLog(const char* text);

// Checks the attributes of a member: a plausible count, and a name and a value for each.
void CheckAttributes(const char* owner, const char* member, std::uint64_t count, const REALattribute* attributes);

// Each takes the owner's name, the array and its count. A null array with a count is one of the findings.
void CheckMethods(const char* owner, const REALmethodDefinition* methods, std::uint64_t count);
void CheckProperties(const char* owner, const REALproperty* properties, std::uint64_t count);
void CheckConstants(const char* owner, const REALconstant* constants, std::uint64_t count);
void CheckEvents(const char* owner, const REALevent* events, std::uint64_t count);
void CheckDelegates(const char* owner, const REALdelegate* delegates, std::uint64_t count);

// Checks a global method that is registered without an owner.
void CheckGlobalMethod(const REALmethodDefinition& method);

}  // namespace zkt
