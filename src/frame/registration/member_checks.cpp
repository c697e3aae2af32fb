#include "frame/registration/member_checks.h"

#include <strings.h>

#include "runtime/debug_log.h"

// Some functions in this file take a format string. Its arguments are always the owner, the member if there is one, and
// the count.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace zkt {

namespace {

constexpr std::uint64_t kMaxMembers = 10000;

int Number(std::uint64_t value) { return static_cast<int>(value); }

// Returns whether the count is too large for the members to be checked. If so, logs the message.
bool IsOutOfRange(const char* message, const char* owner, std::uint64_t count) {
  if (count <= kMaxMembers) return false;
  LogMessageX(message, owner, Number(count));
  return true;
}

// Does the same for the attributes or enum entries of a single member.
bool IsOutOfRange(const char* message, const char* owner, const char* member, std::uint64_t count) {
  if (count <= kMaxMembers) return false;
  LogMessageX(message, owner, member, Number(count));
  return true;
}

// Checks the attributes of a member. If the count contradicts the array, logs the given message.
template <class Member>
void CheckAttributesOf(const char* message, const char* owner, const char* name, const Member& member) {
  if (BreaksCountRule(member.attributeCount, member.attributes))
    LogMessageX(message, owner, name, Number(member.attributeCount));
  CheckAttributes(owner, name, member.attributeCount, member.attributes);
}

// With the standard accessor, the host accesses the instance data directly. Doubles require custom accessors, and all
// other types must be aligned. Each finding is logged twice, once for the getter and once for the setter.
void CheckStandardAccessor(const char* owner, const char* name, const REALproperty& property) {
  if (property.type == nullptr || property.getter != kStandardAccessor) return;
  const auto offset = static_cast<std::int32_t>(property.parameter);
  if (::strcasecmp(property.type, "double") == 0) {
    LogMessageX("Error: The property %s.%s needs custom getter.", owner, name);
    LogMessageX("Error: The property %s.%s needs custom setter.", owner, name);
  } else if (offset % 4 != 0) {
    for (int accessor = 0; accessor < 2; ++accessor)
      LogMessageX("Error: The property %s.%s has unaligned offset %d.", owner, name, offset);
  }
}

void CheckEnumEntries(const char* owner, const char* name, const REALproperty& property) {
  if (IsOutOfRange("Error: property enum count out of range for %s.%s: %d.", owner, name, property.enumCount)) return;
  if (property.enumCount == 0) return;
  if (property.enumEntries == nullptr) {
    LogMessageX("Error: property enum is nil for %s.%s: %d.", owner, name, Number(property.enumCount));
    return;
  }
  for (std::uint64_t i = 0; i < property.enumCount; ++i) {
    const char* const entry = property.enumEntries[i];
    if (entry == nullptr)
      LogMessageX("Error: The enum value %i in property %s.%s has nil value.", Number(i), owner, name);
    else if (*entry == ' ')
      LogMessageX("Error: The enum value %i in property %s.%s has extra space in value.", Number(i), owner, name);
  }
}

void CheckProperty(const char* owner, const REALproperty& property, std::uint64_t index) {
  const char* const name = ForLog(property.name);
  if (property.name == nullptr) LogMessageX("Error: The property %s.%d has nil name.", owner, Number(index));
  if (property.getter == nullptr) LogMessageX("Error: The property %s.%s has nil getter.", owner, name);
  if (property.type == nullptr) LogMessageX("Error: The property %s.%d has nil type.", owner, Number(index));
  CheckStandardAccessor(owner, name, property);
  if (property.editor != nullptr) LogMessageX("Error: The property %s.%s has editor.", owner, name);
  if (BreaksCountRule(property.enumCount, property.enumEntries))
    LogMessageX("Error: The property %s.%s has wrong enumCount: %d", owner, name, Number(property.enumCount));
  if (BreaksCountRule(property.attributeCount, property.attributes))
    LogMessageX("Error: The property %s.%s has attributes: %d", owner, name, Number(property.attributeCount));
  CheckEnumEntries(owner, name, property);
  CheckAttributes(owner, name, property.attributeCount, property.attributes);
}

}  // namespace

bool BreaksCountRule(std::uint64_t count, const void* array, std::uint64_t limit) {
  return count == 0 ? array != nullptr : count > limit || array == nullptr;
}

const char* ForLog(const char* text) { return text != nullptr ? text : "(null)"; }

void CheckAttributes(const char* owner, const char* member, std::uint64_t count, const REALattribute* attributes) {
  if (IsOutOfRange("Error: attribute count out of range for %s.%s: %d.", owner, member, count)) return;
  if (attributes == nullptr) return;
  for (std::uint64_t i = 0; i < count; ++i) {
    const REALattribute& attribute = attributes[i];
    if (attribute.name == nullptr)
      LogMessageX("Error: %s.%s has an attribute without name! Index: %d", owner, member, Number(i));
    if (attribute.value == nullptr)
      LogMessageX("Error: %s.%s has an attribute without value! Name: %s Index: %d", owner, member,
                  ForLog(attribute.name), Number(i));
  }
}

void CheckMethods(const char* owner, const REALmethodDefinition* methods, std::uint64_t count) {
  if (IsOutOfRange("Error: method count out of range for %s: %d.", owner, count)) return;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (methods == nullptr) {
      LogMessageX("Error: method %s.%d is NULL.", owner, Number(i));
      continue;
    }
    const REALmethodDefinition& method = methods[i];
    const char* const declaration = ForLog(method.declaration);
    if (method.declaration == nullptr) LogMessageX("Error: The method %s.%d has nil declaration.", owner, Number(i));
    if (method.function == nullptr) LogMessageX("Error: The method %s.%s has nil function.", owner, declaration);
    CheckAttributesOf("Error: The method %s.%s has the wrong attributeCount value: %d", owner, declaration, method);
  }
}

void CheckProperties(const char* owner, const REALproperty* properties, std::uint64_t count) {
  if (IsOutOfRange("Error: property count out of range for %s: %d.", owner, count) || properties == nullptr) return;
  for (std::uint64_t i = 0; i < count; ++i) CheckProperty(owner, properties[i], i);
}

void CheckConstants(const char* owner, const REALconstant* constants, std::uint64_t count) {
  if (IsOutOfRange("Error: constant count out of range for %s: %d.", owner, count)) return;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (constants == nullptr) {
      LogMessageX("Error: Constant %s.%d is NULL.", owner, Number(i));
      continue;
    }
    if (constants[i].declaration == nullptr)
      LogMessageX("Error: The constant %s.%d has nil declaration.", owner, Number(i));
    CheckAttributesOf("Error: The constant %s.%s has the wrong attributeCount value: %d", owner,
                      ForLog(constants[i].declaration), constants[i]);
  }
}

void CheckEvents(const char* owner, const REALevent* events, std::uint64_t count) {
  if (IsOutOfRange("Error: event count out of range for %s: %d.", owner, count) || events == nullptr) return;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (events[i].declaration == nullptr) LogMessageX("Error: The event %s.%d has nil declaration.", owner, Number(i));
    CheckAttributesOf("Error: The event %s.%s has the wrong attributeCount value: %d", owner,
                      ForLog(events[i].declaration), events[i]);
  }
}

void CheckDelegates(const char* owner, const REALdelegate* delegates, std::uint64_t count) {
  // A negative count becomes a huge unsigned number, so it is out of range as well.
  if (IsOutOfRange("Error: delegate count out of range for %s: %d.", owner, count) || delegates == nullptr) return;
  for (std::uint64_t i = 0; i < count; ++i) {
    const char* const declaration = ForLog(delegates[i].declaration);
    if (delegates[i].declaration == nullptr)
      LogMessageX("Error: The delegate %s.%d has nil declaration.", owner, Number(i));
    if (delegates[i].flags == 0) LogMessageX("Warning: The delegate %s.%s has 0 for flags.", owner, declaration);
    CheckAttributesOf("Error: The delegate %s.%s has the wrong attributeCount value: %d", owner, declaration,
                      delegates[i]);
  }
}

void CheckGlobalMethod(const REALmethodDefinition& method) {
  const char* const declaration = ForLog(method.declaration);
  if (method.declaration == nullptr) LogMessageX("Error: A method without declaration.");
  if (method.function == nullptr) LogMessageX("Error: The method %s has no function.", declaration);
  if (BreaksCountRule(method.attributeCount, method.attributes))
    LogMessageX("Error: The method %s has the wrong attributeCount value: %d", declaration,
                Number(method.attributeCount));
  CheckAttributes("", declaration, method.attributeCount, method.attributes);
}

}  // namespace zkt
