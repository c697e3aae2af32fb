#include "frame/registration/record_checks.h"

#include <array>
#include <cstring>
#include <span>

#include "frame/contract/plugin_state.h"
#include "frame/registration/member_checks.h"
#include "frame/registration/record_rules.h"
#include "runtime/debug_log.h"

// The format strings are in the rule table, next to the defects that determine their arguments.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

namespace zkt {

namespace {

int Number(std::uint64_t value) { return static_cast<int>(value); }

struct CountedArray {
  std::uint64_t count = 0;
  const void* array = nullptr;
};

// A uniform view of all kinds of records. A module has no superclass, no instance data and no shared members.
struct RecordView {
  RecordKind kind;
  std::uint32_t version;
  const char* name;
  const char* superName = nullptr;
  std::uint64_t dataSize = 0;
  std::uint64_t forSystemUse = 0;
  std::array<CountedArray, static_cast<std::size_t>(Part::kPartCount)> parts{};

  CountedArray& operator[](Part part) { return parts[static_cast<std::size_t>(part)]; }
  const CountedArray& operator[](Part part) const { return parts[static_cast<std::size_t>(part)]; }
};

RecordView ViewOf(const REALclassDefinition& record, RecordKind kind) {
  RecordView view{kind, record.version, record.name, record.superName, record.dataSize, record.forSystemUse};
  view[Part::kProperties] = {record.propertyCount, record.properties};
  view[Part::kMethods] = {record.methodCount, record.methods};
  view[Part::kEvents] = {record.eventCount, record.events};
  view[Part::kEventInstances] = {record.eventInstanceCount, record.eventInstances};
  view[Part::kConstants] = {record.constantCount, record.constants};
  view[Part::kSharedProperties] = {record.sharedPropertyCount, record.sharedProperties};
  view[Part::kSharedMethods] = {record.sharedMethodCount, record.sharedMethods};
  view[Part::kAttributes] = {record.attributeCount, record.attributes};
  view[Part::kDelegates] = {record.delegateCount, record.delegates};
  view[Part::kEnums] = {record.enumCount, record.enums};
  return view;
}

RecordView ViewOf(const REALmoduleDefinition& record) {
  RecordView view{RecordKind::kModule, record.version, record.name};
  view[Part::kProperties] = {record.propertyCount, record.properties};
  view[Part::kMethods] = {record.methodCount, record.methods};
  view[Part::kAttributes] = {record.attributeCount, record.attributes};
  view[Part::kDelegates] = {record.delegateCount, record.delegates};
  view[Part::kEnums] = {record.enumCount, record.enums};
  view[Part::kStructures] = {record.structureCount, record.structures};
  return view;
}

// A module built at start-up already has the host's interface level.
bool HasWrongVersion(const RecordView& view) {
  if (view.version == kCurrentREALControlVersion) return false;
  return view.kind != RecordKind::kModule || view.version != static_cast<std::uint32_t>(CurrentREALControlVersion);
}

void Apply(const RecordRule& rule, const RecordView& view) {
  const char* const name = ForLog(view.name);
  const auto logIf = [&](bool isFound, std::uint64_t number) {
    if (isFound) LogMessageX(rule.text, name, Number(number));
  };
  const CountedArray part = rule.part == Part::kNone ? CountedArray() : view[rule.part];
  switch (rule.defect) {
    case Defect::kVersion:
      if (HasWrongVersion(view)) LogMessageX(rule.text, name, Number(view.version), Number(kCurrentREALControlVersion));
      break;
    case Defect::kNoName:
      if (view.name == nullptr) LogMessageX("%s", rule.text);
      break;
    case Defect::kHasSuper:
      if (view.superName != nullptr) LogMessageX(rule.text, view.superName);
      break;
    case Defect::kHasData:
      return logIf(view.dataSize != 0, view.dataSize);
    case Defect::kSystemWord:
      return logIf(view.forSystemUse != 0, view.forSystemUse);
    case Defect::kContradiction:
      return logIf(BreaksCountRule(part.count, part.array, rule.limit), part.count);
    case Defect::kNotAllowed:
      return logIf(part.count != 0 || part.array != nullptr, part.count);
    case Defect::kPointless:
      return logIf(part.count != 0, part.count);
    case Defect::kLowercaseName:
      if (*name >= 'a' && *name <= 'z') LogMessageX(rule.text, name);
      break;
  }
}

// Some rules for extensions are checked after the members.
bool IsLate(Defect defect) { return defect == Defect::kPointless || defect == Defect::kLowercaseName; }

void ApplyRules(const RecordView& view, bool late = false) {
  for (const RecordRule& rule : kRecordRules)
    if (rule.kind == view.kind && IsLate(rule.defect) == late) Apply(rule, view);
}

const char* NameOf(const REALmethodDefinition& method) { return method.declaration; }
const char* NameOf(const REALproperty& property) { return property.name; }

bool HasStandardAccessor(const REALproperty& property) {
  return property.getter == kStandardAccessor || property.setter == kStandardAccessor;
}

bool HasFlagsBesidesConsoleSafe(std::uint32_t ownerFlags) { return (ownerFlags & ~kConsoleSafe) != 0; }

// Logs the members that are console-safe and have no target bits, except a member named `exempt`.
template <class Member>
void ReportConsoleSafeMembers(const char* label, const char* owner, std::span<Member> members,
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
  ApplyRules(ViewOf(definition, RecordKind::kClass));
  if (definition.superName != nullptr && std::strstr(definition.superName, "ZKT") != nullptr &&
      definition.dataSize != 0)
    LogMessageX("Warning: The subclass %s of %s has data size: %d", name, definition.superName,
                Number(definition.dataSize));
  if (rbversion < 2020.02 && definition.flags == kTargetIOS)
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
  if (HasFlagsBesidesConsoleSafe(definition.flags)) {
    ReportConsoleSafeMembers("Console-safe method in console-unsafe class: ", name,
                             Members(definition.methods, definition.methodCount));
    ReportConsoleSafeMembers("Console-safe shared method in console-unsafe class: ", name,
                             Members(definition.sharedMethods, definition.sharedMethodCount));
    ReportConsoleSafeMembers("Console-safe property in console-unsafe class: ", name,
                             Members(definition.properties, definition.propertyCount));
    ReportConsoleSafeMembers("Console-safe shared property in console-unsafe class: ", name,
                             Members(definition.sharedProperties, definition.sharedPropertyCount), "Debugging");
  }
  CheckOffsets(name, definition);
}

void CheckModule(const REALmoduleDefinition& definition) {
  const char* const name = ForLog(definition.name);
  ApplyRules(ViewOf(definition));
  CheckMethods(name, definition.methods, definition.methodCount);
  CheckProperties(name, definition.properties, definition.propertyCount);
  CheckConstants(name, definition.constants, definition.constantCount);
  CheckDelegates(name, definition.delegates, definition.delegateCount);
  if (!HasFlagsBesidesConsoleSafe(definition.flags)) return;
  ReportConsoleSafeMembers("Console-safe method in console-unsafe module: ", name,
                           Members(definition.methods, definition.methodCount));
  ReportConsoleSafeMembers("Console-safe property in console-unsafe module: ", name,
                           Members(definition.properties, definition.propertyCount));
}

void CheckClassExtension(const REALclassDefinition& definition) {
  const char* const name = ForLog(definition.name);
  const RecordView view = ViewOf(definition, RecordKind::kExtension);
  ApplyRules(view);
  CheckMethods(name, definition.methods, definition.methodCount);
  CheckProperties(name, definition.properties, definition.propertyCount);
  CheckConstants(name, definition.constants, definition.constantCount);
  CheckEvents(name, definition.events, definition.eventCount);
  CheckMethods(name, definition.sharedMethods, definition.sharedMethodCount);
  CheckProperties(name, definition.sharedProperties, definition.sharedPropertyCount);
  CheckDelegates(name, definition.delegates, definition.delegateCount);
  ApplyRules(view, true);
}

}  // namespace zkt
