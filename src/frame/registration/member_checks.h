// Looks for the mistakes that an author of declarations makes in the members of a class, module or class extension.
// Findings are only logged: whatever is found, the declaration is registered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Whether a count and its array contradict each other, or the count is beyond any sensible one.
bool BreaksCountRule(std::uint64_t count, const void* array, std::uint64_t limit = 1000);

// The members of an array that may be missing in spite of its count.
template <class Member>
std::span<Member> Members(Member* members, std::uint64_t count) {
  return {members, members != nullptr ? static_cast<std::size_t>(count) : 0};
}

// A text for a log line; "(null)" for null.
const char* ForLog(const char* text);

// The attributes of a member: a plausible number of them, each with name and value.
void CheckAttributes(const char* owner, const char* member, std::uint64_t count, const REALattribute* attributes);

// Each takes the owner's name, the array and its count; a null array with a count is one of the findings.
void CheckMethods(const char* owner, const REALmethodDefinition* methods, std::uint64_t count);
void CheckProperties(const char* owner, const REALproperty* properties, std::uint64_t count);
void CheckConstants(const char* owner, const REALconstant* constants, std::uint64_t count);
void CheckEvents(const char* owner, const REALevent* events, std::uint64_t count);
void CheckDelegates(const char* owner, const REALdelegate* delegates, std::uint64_t count);

// A global method that is registered by itself, without an owner.
void CheckGlobalMethod(const REALmethodDefinition& method);

}  // namespace zkt
