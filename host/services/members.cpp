#include "services/members.h"

#include <span>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

// Collects the members of a record by kind, in the order in which Xojo lists the kinds.
class Collector {
 public:
  std::vector<Member> members;

  void operator()(const zkt::REALmoduleDefinition* module) {
    Add(OwnerKind::kModule, module->name, module->methods, module->methodCount);
    Add(OwnerKind::kModule, module->name, module->properties, module->propertyCount);
    Add(OwnerKind::kModule, module->name, module->delegates, module->delegateCount);
  }
  void operator()(const zkt::REALclassDefinition* type) { AddClass(OwnerKind::kInstance, type); }
  void operator()(ClassExtension extension) { AddClass(OwnerKind::kClassExtension, extension.record); }
  void operator()(const zkt::REALmethodDefinition* method) { Add(OwnerKind::kNone, "", method, 1); }

 private:
  template <class Record>
  void Add(OwnerKind kind, const char* owner, const Record* records, std::uint64_t count) {
    for (const Record& record : std::span(records, count)) members.push_back({kind, owner, &record});
  }

  void AddClass(OwnerKind kind, const zkt::REALclassDefinition* type) {
    Add(kind, type->name, type->properties, type->propertyCount);
    Add(kind, type->name, type->methods, type->methodCount);
    Add(OwnerKind::kShared, type->name, type->sharedProperties, type->sharedPropertyCount);
    Add(OwnerKind::kShared, type->name, type->sharedMethods, type->sharedMethodCount);
    Add(kind, type->name, type->delegates, type->delegateCount);
  }
};

}  // namespace

std::vector<Member> MembersOf(const Registration& registration) {
  Collector collector;
  std::visit(collector, registration);
  return std::move(collector.members);
}

std::vector<Member> MembersOf(const Host& host) {
  Collector collector;
  for (const Registration& registration : host.registrations) std::visit(collector, registration);
  return std::move(collector.members);
}

void* FindNativeFunction(const Host& host, std::string_view methodName) {
  for (const Member& member : MembersOf(host)) {
    const auto* const method = member.As<zkt::REALmethodDefinition>();
    const bool hasNoClass = member.ownerKind == OwnerKind::kModule || member.ownerKind == OwnerKind::kNone;
    if (method != nullptr && hasNoClass && zkt::ParseDeclaration(method->declaration).name == methodName)
      return method->function;
  }
  return nullptr;
}

}  // namespace host
