#include "frame/registration/registrar.h"

#include "frame/contract/host_services.h"
#include "frame/contract/plugin_state.h"
#include "frame/registration/fixed_flags.h"
#include "frame/registration/member_checks.h"
#include "frame/registration/record_checks.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// Returns whether the host accepts global methods and class extensions as members of a module.
bool HostTakesGlobalsAsModule() { return rbversion >= 2013.0 && rbversion < 3000.0; }

bool HasPartName(const char* recordName) {
  if (gpartname != nullptr) return true;
  LogMessageX("Error: gpartname is nil!? %s", ForLog(recordName));
  return false;
}

std::uint32_t InterfaceLevel() { return static_cast<std::uint32_t>(CurrentREALControlVersion); }

template <class Member>
void FixMemberFlags(Member* members, std::uint64_t count) {
  for (Member& member : Members(members, count)) member.flags = FixedFlags(member.flags);
}

// Gives default scope to the members without a scope, so that they are accessible through the module's name.
template <class Member>
void GiveDefaultScope(Member* members, std::uint64_t count, const char* complaint) {
  if (members == nullptr && count != 0) LogMessageX("%s%s", kTracePrefix, complaint);
  for (Member& member : Members(members, count))
    if ((member.flags & kScopeMask) == 0) member.flags |= kDefaultScope;
}

}  // namespace

void FixFlags(REALclassDefinition* definition) {
  definition->flags = FixedFlags(definition->flags);
  FixMemberFlags(definition->methods, definition->methodCount);
  FixMemberFlags(definition->sharedMethods, definition->sharedMethodCount);
  FixMemberFlags(definition->properties, definition->propertyCount);
  FixMemberFlags(definition->sharedProperties, definition->sharedPropertyCount);
}

void MyREALRegisterClass(REALclassDefinition* definition) {
  if (!HasPartName(definition->name)) return;
  CheckClass(*definition);
  CheckTargetFlags(*definition);
  FixFlags(definition);
  constexpr std::uint64_t kDataSizeUnit = 16;
  definition->dataSize = (definition->dataSize + kDataSizeUnit - 1) / kDataSizeUnit * kDataSizeUnit;
  definition->version = InterfaceLevel();
  REALRegisterClass(definition);
}

void MyREALRegisterModule(REALmoduleDefinition* definition) {
  if (!HasPartName(definition->name)) return;
  CheckModule(*definition);
  GiveDefaultScope(definition->methods, definition->methodCount, "Error: method array is nil while count is not zero!");
  GiveDefaultScope(definition->properties, definition->propertyCount,
                   "Error: property array is nil while count is not zero!");
  GiveDefaultScope(definition->enums, definition->enumCount, "Error: enum array is nil while count is not zero!");
  FixMemberFlags(definition->methods, definition->methodCount);
  FixMemberFlags(definition->properties, definition->propertyCount);
  if (definition->flags == 0) definition->flags = kConsoleSafe;
  definition->version = InterfaceLevel();
  REALRegisterModule(definition);
}

void RegisterClassExtension(REALclassDefinition* definition, GlobalsModule& module) {
  CheckClassExtension(*definition);
  CheckTargetFlags(*definition);
  FixFlags(definition);
  if (HostTakesGlobalsAsModule()) {
    module.AppendExtension(*definition);
  } else {
    definition->version = InterfaceLevel();
    REALRegisterClassExtension(definition);
  }
}

void RegisterGlobalMethods(std::span<REALmethodDefinition> methods, GlobalsModule& module) {
  for (REALmethodDefinition& method : methods) method.flags = FixedFlags(method.flags);
  if (HostTakesGlobalsAsModule()) {
    module.Append(methods);
  } else {
    for (REALmethodDefinition& method : methods) {
      CheckGlobalMethod(method);
      REALRegisterMethod(&method);
    }
  }
  if (module.Record() != nullptr) MyREALRegisterModule(module.Record());
}

}  // namespace zkt
