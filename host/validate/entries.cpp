#include "validate/entries.h"

#include "core/classes.h"

namespace host::validate {

namespace {

struct SpecialEntry {
  std::string_view name;
  Driving driving;
};

constexpr SpecialEntry kSpecialEntries[] = {
    {"ExitZKT", Driving::kEndsProcess},
    {"AbortZKT", Driving::kEndsProcess},
    {"CrashNiceZKT", Driving::kEndsProcess},
    {"CrashUglyZKT", Driving::kEndsProcess},
    {"ConsoleExecuteZKT", Driving::kStartsProgram},
    {"CallDelegateCrashSafeZKT", Driving::kProtectsDelegate},
};

Driving DrivingOf(std::string_view name) {
  for (const SpecialEntry& special : kSpecialEntries)
    if (zkt::IsSameName(special.name, name)) return special.driving;
  return Driving::kPlain;
}

std::string Prefix(std::string_view owner) { return owner.empty() ? std::string() : std::string(owner) + "."; }

std::string LabelOf(const Method& method) {
  std::string label = Prefix(method.owner) + std::string(method.signature.name) + "(";
  const char* separator = "";
  for (const Parameter& parameter : method.signature.parameters) {
    label += separator + std::string(parameter.isAssigns ? "assigns " : "") + NameOf(parameter.type);
    separator = ", ";
  }
  return label + ")";
}

// The class of the plug-in's that a member needs an instance of; null for what needs none.
const ObjectClass* InstanceClass(OwnerKind kind, std::string_view owner) {
  return kind == OwnerKind::kInstance ? FindClass(owner) : nullptr;
}

}  // namespace

std::vector<Entry> EntriesOf(const Catalogue& catalogue) {
  std::vector<Entry> entries;
  for (const Method& method : catalogue.Methods()) {
    const ObjectClass* const type = InstanceClass(method.ownerKind, method.owner);
    if (type != nullptr && type->record == nullptr) continue;  // the host's own
    entries.push_back({EntryKind::kMethod, LabelOf(method), &method, nullptr, type, DrivingOf(method.signature.name)});
  }
  for (const Property& property : catalogue.Properties()) {
    const ObjectClass* const type = InstanceClass(property.ownerKind, property.owner);
    const std::string label = Prefix(property.owner) + std::string(property.name);
    entries.push_back({EntryKind::kGetter, label, nullptr, &property, type});
    if (property.setter != nullptr) entries.push_back({EntryKind::kSetter, label + " =", nullptr, &property, type});
  }
  for (const auto& type : Host::Current().objectClasses)
    entries.push_back({EntryKind::kLife, "New " + type->name, nullptr, nullptr, type.get()});
  return entries;
}

}  // namespace host::validate
