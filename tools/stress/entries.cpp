#include "stress/entries.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "core/classes.h"
#include "declarations/calls.h"

namespace stress {

namespace {

constexpr std::string_view kSections[] = {kEndsWith,      kStartsProgram,      kCatchesCrashes,
                                          kOneThreadOnly, kMayDifferOnThreads, kMayDifferWithoutServices,
                                          kMayBeSlow,     kReadsState,         kWords};

// Returns the class of the instance on which a member is called; null if the member needs no instance.
const host::ObjectClass* InstanceClass(host::OwnerKind kind, std::string_view owner) {
  return kind == host::OwnerKind::kInstance ? host::FindClass(owner) : nullptr;
}

Entry EntryOf(const host::Method& method) {
  Entry entry;
  // Whether a module contains a global method depends on the host version, so the label omits the module.
  entry.label = (method.IsGlobal() ? "" : std::string(method.owner) + ".") + std::string(method.signature.name) + "(";
  const char* separator = "";
  if (method.ownerKind == host::OwnerKind::kClassExtension)
    entry.parameters.push_back({"", {host::TypeKind::kObject, false, method.owner}, false, true, false, ""});
  for (const host::Parameter& parameter : method.signature.parameters) {
    entry.label += std::exchange(separator, ", ") + std::string(parameter.isAssigns ? "assigns " : "");
    entry.label += NameOf(parameter.type);
    entry.parameters.push_back(parameter);
  }
  entry.label += ")";
  entry.type = InstanceClass(method.ownerKind, method.owner);
  entry.function = method.function;
  entry.call = [&method](const auto& arguments) {
    return host::CallNative(method.function, arguments, method.signature.result);
  };
  return entry;
}

void AddEntriesOf(const host::Property& property, std::vector<Entry>& entries) {
  const std::string label = std::string(property.owner) + "." + std::string(property.name);
  const host::ObjectClass* const type = InstanceClass(property.ownerKind, property.owner);
  const auto self = [type](const std::vector<host::Argument>& arguments) {
    return type != nullptr ? arguments.front().value.Object() : nullptr;
  };
  const auto get = [&property, self](const auto& arguments) { return host::GetProperty(property, self(arguments)); };
  const auto set = [&property, self](const auto& arguments) {
    host::SetProperty(property, self(arguments), arguments.back().value);
    return host::Value();
  };
  entries.push_back({label, {}, get, type});
  if (property.setter != nullptr)
    entries.push_back({label + " =", {{"value", property.type, false, false, true, ""}}, set, type});
}

}  // namespace

Expectations::Expectations(const std::string& file) {
  if (file.empty()) return;
  std::ifstream stream(file);
  CLI::ConfigTOML toml;
  toml.parentSeparator('/')->comment('\0');  // names contain periods, and values contain number signs
  for (const CLI::ConfigItem& item : toml.from_config(stream)) {
    if (item.name == "++" || item.name == "--") continue;  // start or end of a section
    const std::string section = item.parents.empty() ? "" : item.parents.front();
    const auto* const known = std::ranges::find(kSections, section);
    if (known == std::end(kSections)) {
      std::ostringstream message;
      message << file << ": " << item.name << " is in unknown section [" << section << "]; the sections are";
      for (const std::string_view name : kSections) message << " [" << name << ']';
      throw std::runtime_error(message.str());
    }
    items_[item.name].emplace(*known, item.inputs);
  }
}

std::map<std::string_view, Texts> Expectations::About(std::string_view label) const {
  const std::string_view path = label.substr(0, label.find_first_of("( "));
  std::map<std::string_view, Texts> found;
  for (const std::string_view name : {path, path.substr(path.rfind('.') + 1)})
    if (const auto item = items_.find(name); item != items_.end())
      found.insert(item->second.begin(), item->second.end());
  return found;
}

std::vector<Entry> EntriesOf(const host::Catalogue& catalogue, const Expectations& expectations) {
  std::vector<Entry> entries;
  for (const host::Method& method : catalogue.Methods()) {
    const host::ObjectClass* const type = InstanceClass(method.ownerKind, method.owner);
    if (type == nullptr || type->record != nullptr) entries.push_back(EntryOf(method));  // not a member of a host class
  }
  for (const host::Property& property : catalogue.Properties()) AddEntriesOf(property, entries);
  for (const auto& type : host::Host::Current().objectClasses)
    entries.push_back({"New " + type->name, {}, [type = type.get()](const auto&) {
                         static_cast<void>(host::ObjectRef(host::MakeObject(type)));
                         return host::Value();
                       }});
  for (Entry& entry : entries) entry.expectations = expectations.About(entry.label);
  return entries;
}

}  // namespace stress
