// Declaration checks for the members of a class, module or class extension. They find the plug-in author's mistakes.
// Findings are only logged and never prevent registration. Do not change the messages, not even to correct their
// grammar, because plug-in authors search their logs for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Returns whether a count contradicts its array or exceeds the limit.
bool BreaksCountRule(std::uint64_t count, const void* array, std::uint64_t limit = 1000);

// Returns the members of an array, or an empty span if the array is null.
template <class Member>
std::span<Member> Members(Member* members, std::uint64_t count) {
  return {members, members != nullptr ? static_cast<std::size_t>(count) : 0};
}

// Returns `text`, or "(null)" if `text` is null.
const char* ForLog(const char* text);

// Checks that a member's attribute count is plausible and that every attribute has a name and a value.
void CheckAttributes(const char* owner, const char* member, std::uint64_t count, const REALattribute* attributes);

// Check the members of one kind. Each function takes the owner's name, the members and their count. The array may be
// null even if the count is not 0.
void CheckMethods(const char* owner, const REALmethodDefinition* methods, std::uint64_t count);
void CheckProperties(const char* owner, const REALproperty* properties, std::uint64_t count);
void CheckConstants(const char* owner, const REALconstant* constants, std::uint64_t count);
void CheckEvents(const char* owner, const REALevent* events, std::uint64_t count);
void CheckDelegates(const char* owner, const REALdelegate* delegates, std::uint64_t count);

// Checks a global method that is registered without an owner.
void CheckGlobalMethod(const REALmethodDefinition& method);

}  // namespace zkt
