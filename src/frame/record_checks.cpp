#include "frame/record_checks.h"

#include <cstring>
#include <span>

#include "frame/member_checks.h"
#include "frame/plugin_state.h"
#include "runtime/debug_log.h"

// Messages stand in tables; each takes the name and one number.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace zkt {

namespace {

int Number(std::uint64_t value) { return static_cast<int>(value); }

// A count, its array, and the message when they break a rule.
struct CountCheck {
  std::uint64_t count;
  const void* array;
  const char* message;
  std::uint64_t limit = 1000;
};

void CheckCounts(const char* name, std::span<const CountCheck> checks) {
  for (const CountCheck& check : checks)
    if (BreaksCountRule(check.count, check.array, check.limit)) LogMessageX(check.message, name, Number(check.count));
}

// What a class extension cannot have.
void CheckAbsent(const char* name, std::span<const CountCheck> checks) {
  for (const CountCheck& check : checks)
    if (check.count != 0 || check.array != nullptr) LogMessageX(check.message, name, Number(check.count));
}

struct CountWarning {
  std::uint64_t count;
  const char* message;
};

void WarnOfCounts(const char* name, std::span<const CountWarning> warnings) {
  for (const CountWarning& warning : warnings)
    if (warning.count != 0) LogMessageX(warning.message, name, Number(warning.count));
}

void LogVersion(const char* message, const char* name, std::uint32_t version) {
  LogMessageX(message, name, static_cast<int>(version), static_cast<int>(kCurrentREALControlVersion));
}

const char* NameOf(const REALmethodDefinition& method) { return method.declaration; }
const char* NameOf(const REALproperty& property) { return property.name; }

bool HasStandardAccessor(const REALproperty& property) {
  return property.getter == kStandardAccessor || property.setter == kStandardAccessor;
}

template <class Member>
std::span<const Member> Members(const Member* members, std::uint64_t count) {
  return {members, members != nullptr ? static_cast<std::size_t>(count) : 0};
}

bool IsMoreThanConsoleSafe(std::uint32_t ownerFlags) { return (ownerFlags & ~kConsoleSafe) != 0; }

// Reports the members that are console-safe and nothing else; one of the name `exempt` may be so.
template <class Member>
void ReportConsoleOnly(const char* label, const char* owner, std::span<const Member> members,
                       const char* exempt = nullptr) {
  for (const Member& member : members) {
    if ((member.flags & kTargetAndConsoleMask) != kConsoleSafe) continue;
    const char* const name = ForLog(NameOf(member));
    if (exempt != nullptr && std::strcmp(name, exempt) == 0) continue;
    LogMessageX("%s%s %s, %s", kTracePrefix, label, owner, name);
  }
}

void CheckOffsets(const char* name, const REALclassDefinition& definition) {
  for (const REALproperty& property : Members(definition.properties, definition.propertyCount)) {
    if (!HasStandardAccessor(property)) continue;
    const auto offset = static_cast<std::int32_t>(property.parameter);
    if (std::int64_t{offset} + 4 > static_cast<std::int64_t>(definition.dataSize))
      LogMessageX("Error: Offset for variable too big: %s.%s %d %d", name, ForLog(property.name), offset,
                  Number(definition.dataSize));
  }
}

}  // namespace

void CheckClass(const REALclassDefinition& definition) {
  const char* const name = ForLog(definition.name);
  if (definition.version != kCurrentREALControlVersion)
    LogVersion("Error: The class %s has the wrong kCurrentREALControlVersion: %d vs. %d", name, definition.version);
  if (definition.name == nullptr) LogMessageX("Error: A class without name.");
  if (definition.forSystemUse != 0)
    LogMessageX("Error: The class %s has the wrong forSystemUse value: %d", name, Number(definition.forSystemUse));
  const CountCheck checks[] = {
      {definition.propertyCount, definition.properties, "Error: The class %s has the wrong propertyCount value: %d"},
      {definition.methodCount, definition.methods, "Error: The class %s has the wrong methodCount value: %d"},
      {definition.eventCount, definition.events, "Error: The class %s has the wrong eventCount value: %d"},
      {definition.eventInstanceCount, definition.eventInstances,
       "Error: The class %s has the wrong eventInstanceCount value: %d"},
      {definition.constantCount, definition.constants, "Error: The class %s has the wrong constantCount value: %d",
       4000},
      {definition.sharedPropertyCount, definition.sharedProperties,
       "Error: The class %s has the wrong sharedPropertyCounttionCount value: %d"},
      {definition.sharedMethodCount, definition.sharedMethods,
       "Error: The class %s has the wrong sharedMethodCount value: %d"},
      {definition.attributeCount, definition.attributes, "Error: The class %s has the wrong attributeCount value: %d"},
      {definition.delegateCount, definition.delegates, "Error: The class %s has the wrong delegateCount value: %d"},
      {definition.enumCount, definition.enums, "Error: The class %s has the wrong enumCount value: %d"},
      {definition.attributeCount, definition.attributes, "Error: The class extension %s has wrong attributes: %d"},
  };
  CheckCounts(name, checks);
  if (definition.superName != nullptr && std::strstr(definition.superName, "ZKT") != nullptr &&
      definition.dataSize != 0)
    LogMessageX("Warning: The subclass %s of %s has data size: %d", name, definition.superName,
                Number(definition.dataSize));
  constexpr std::uint32_t kOnlyIOS = 0x400;
  if (rbversion < 2020.02 && definition.flags == kOnlyIOS)
    LogMessageX("Warning: iOS only class registered for old Xojo: %s", name);
  CheckAttributes("", name, definition.attributeCount, definition.attributes);
  CheckMethods(name, definition.methods, definition.methodCount);
  CheckProperties(name, definition.properties, definition.propertyCount);
  CheckConstants(name, definition.constants, definition.constantCount);
  CheckEvents(name, definition.events, definition.eventCount);
  CheckDelegates(name, definition.delegates, definition.delegateCount);
  CheckMethods(name, definition.sharedMethods, definition.sharedMethodCount);
  CheckProperties(name, definition.sharedProperties, definition.sharedPropertyCount);
}

void CheckTargetFlags(const REALclassDefinition& definition) {
  const char* const name = ForLog(definition.name);
  if (IsMoreThanConsoleSafe(definition.flags)) {
    ReportConsoleOnly("Console-safe method in console-unsafe class: ", name,
                      Members(definition.methods, definition.methodCount));
    ReportConsoleOnly("Console-safe shared method in console-unsafe class: ", name,
                      Members(definition.sharedMethods, definition.sharedMethodCount));
    ReportConsoleOnly("Console-safe property in console-unsafe class: ", name,
                      Members(definition.properties, definition.propertyCount));
    ReportConsoleOnly("Console-safe shared property in console-unsafe class: ", name,
                      Members(definition.sharedProperties, definition.sharedPropertyCount), "Debugging");
  }
  CheckOffsets(name, definition);
}

void CheckModule(const REALmoduleDefinition& definition) {
  const char* const name = ForLog(definition.name);
  if (definition.version != kCurrentREALControlVersion &&
      definition.version != static_cast<std::uint32_t>(CurrentREALControlVersion))
    LogVersion("Error: The module %s has the wrong kCurrentREALControlVersion: %d vs. %d", name, definition.version);
  if (definition.name == nullptr) LogMessageX("Error: A module without name.");
  const CountCheck checks[] = {
      {definition.propertyCount, definition.properties, "Error: The module %s has the wrong propertyCount value: %d"},
      {definition.methodCount, definition.methods, "Error: The module %s has the wrong methodCount value: %d"},
      {definition.structureCount, definition.structures, "Error: The module %s has the wrong structureCount value: %d"},
      {definition.enumCount, definition.enums, "Error: The module %s has the wrong enumCount value: %d"},
      {definition.attributeCount, definition.attributes, "Error: The module %s has the wrong attributeCount value: %d"},
      {definition.delegateCount, definition.delegates, "Error: The module %s has the wrong delegateCount value: %d"},
  };
  CheckCounts(name, checks);
  CheckMethods(name, definition.methods, definition.methodCount);
  CheckProperties(name, definition.properties, definition.propertyCount);
  CheckConstants(name, definition.constants, definition.constantCount);
  CheckDelegates(name, definition.delegates, definition.delegateCount);
  if (!IsMoreThanConsoleSafe(definition.flags)) return;
  ReportConsoleOnly("Console-safe method in console-unsafe module: ", name,
                    Members(definition.methods, definition.methodCount));
  ReportConsoleOnly("Console-safe property in console-unsafe module: ", name,
                    Members(definition.properties, definition.propertyCount));
}

void CheckClassExtension(const REALclassDefinition& definition) {
  const char* const name = ForLog(definition.name);
  if (definition.version != kCurrentREALControlVersion)
    LogVersion("Error: The class extension %s has the wrong kCurrentREALControlVersion: %d vs. %d", name,
               definition.version);
  if (definition.name == nullptr) LogMessageX("Error: A class extension without name.");
  if (definition.superName != nullptr)
    LogMessageX("Error: A class extension can't have super name: %s", definition.superName);
  if (definition.dataSize != 0)
    LogMessageX("Error: The class extension %s has the dataSize value: %d", name, Number(definition.dataSize));
  if (definition.forSystemUse != 0)
    LogMessageX("Error: The class extension %s has the wrong forSystemUse value: %d", name,
                Number(definition.forSystemUse));
  const CountCheck counts[] = {
      {definition.propertyCount, definition.properties,
       "Error: The class extension %s has the wrong propertyCount value: %d"},
      {definition.methodCount, definition.methods, "Error: The class extension %s has the wrong methodCount value: %d"},
  };
  CheckCounts(name, counts);
  const CountCheck absent[] = {
      {definition.eventCount, definition.events, "Error: The class extension %s has events: %d"},
      {definition.eventInstanceCount, definition.eventInstances,
       "Error: The class extension %s has event instances: %d"},
      {definition.constantCount, definition.constants, "Error: The class extension %s has constants: %d"},
      {definition.sharedPropertyCount, definition.sharedProperties,
       "Error: The class extension %s has shared Properties: %d"},
      {definition.sharedMethodCount, definition.sharedMethods, "Error: The class extension %s has shared Methods: %d"},
      {definition.delegateCount, definition.delegates, "Error: The class extension %s has delegates %d"},
      {definition.enumCount, definition.enums, "Error: The class extension %s has enums: %d"},
  };
  CheckAbsent(name, absent);
  const CountCheck attributes[] = {
      {definition.attributeCount, definition.attributes, "Error: The class extension %s has wrong attributes: %d"},
  };
  CheckCounts(name, attributes);
  CheckMethods(name, definition.methods, definition.methodCount);
  CheckProperties(name, definition.properties, definition.propertyCount);
  CheckConstants(name, definition.constants, definition.constantCount);
  CheckEvents(name, definition.events, definition.eventCount);
  CheckMethods(name, definition.sharedMethods, definition.sharedMethodCount);
  CheckProperties(name, definition.sharedProperties, definition.sharedPropertyCount);
  CheckDelegates(name, definition.delegates, definition.delegateCount);
  const CountWarning warnings[] = {
      {definition.propertyCount, "Warning: The class extension %s has the propertyCount value: %d"},
      {definition.constantCount, "Warning: The class extension %s has the constantCount value: %d"},
      {definition.eventCount, "Warning: The class extension %s has the eventCount value: %d"},
      {definition.sharedPropertyCount, "Warning: The class extension %s has the sharedProperties value: %d"},
      {definition.sharedMethodCount, "Warning: The class extension %s has the sharedMethods value: %d"},
  };
  WarnOfCounts(name, warnings);
  if (definition.name != nullptr && *definition.name >= 'a' && *definition.name <= 'z')
    LogMessageX("Error: The class extension name %s does not start with capital letter.", definition.name);
}

}  // namespace zkt
