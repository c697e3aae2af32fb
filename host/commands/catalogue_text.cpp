#include "commands/catalogue_text.h"

#include <iomanip>
#include <map>
#include <ostream>
#include <span>
#include <string>

#include "core/strings.h"
#include "frame/catalogue/declaration_syntax.h"
#include "services/members.h"

namespace host {

namespace {

// Returns the method's name with its parameter types, which distinguish overloads, such as
// "SumArrayZKT(Int32(), Integer, Integer)".
std::string LabelOf(const zkt::REALmethodDefinition& method) {
  const zkt::ParsedDeclaration parsed = zkt::ParseDeclaration(method.declaration);
  std::string types;
  for (const zkt::DeclaredParameter& parameter : std::span(parsed.parameters).first(parsed.parameterCount))
    types += (types.empty() ? "" : ", ") + std::string(parameter.type.name) + (parameter.type.isArray ? "()" : "");
  return std::string(parsed.name) + "(" + types + ")";
}

class Writer {
 public:
  Writer(std::ostream& out, const Host& host) : out_(out), interfaceLevel_(host.interfaceLevel) {}

  void Write(const Registration& registration) {
    std::visit(*this, registration);
    for (const Member& member : MembersOf(registration)) {
      owner_ = member.owner;
      out_ << (owner_.empty() ? "global " : member.ownerKind == OwnerKind::kShared ? "  shared " : "  ");
      std::visit(*this, member.record);
    }
  }

  void operator()(const zkt::REALmoduleDefinition* module) {
    out_ << "module " << module->name << Flags(module->flags) << Version(module->version) << '\n';
  }
  void operator()(const zkt::REALclassDefinition* type) { WriteClass("class ", *type); }
  void operator()(ClassExtension extension) { WriteClass("class extension ", *extension.record); }
  // A global method has no title line. It is written as the only member of its registration.
  void operator()(zkt::REALmethodDefinition*) {}

  void operator()(const zkt::REALmethodDefinition* method) {
    out_ << "method " << method->declaration << Flags(method->flags);
    const std::string label = LabelOf(*method);
    if (const std::string function = Function(method->function, label); function != "own") out_ << "  " << function;
    if (method->setter != nullptr) out_ << "  setter " << Function(method->setter, label + " =");
    WriteAttributes(method->attributes, method->attributeCount);
  }
  void operator()(const zkt::REALproperty* property) {
    const std::string name = property->name;
    out_ << "property " << name << " As " << property->type << Flags(property->flags) << "  getter "
         << Function(property->getter, name + " getter") << "  setter " << Function(property->setter, name + " setter")
         << "  parameter " << property->parameter;
    WriteAttributes(property->attributes, property->attributeCount);
  }
  void operator()(const zkt::REALdelegate* delegate) {
    out_ << "delegate " << delegate->declaration << Flags(delegate->flags);
    WriteAttributes(delegate->attributes, delegate->attributeCount);
  }

 private:
  static std::string Flags(std::uint32_t flags) { return "  flags 0x" + ToHex(flags); }

  // A record's version normally equals the interface level, so it is written only if it differs.
  std::string Version(std::uint32_t version) const {
    const bool isUsual = static_cast<std::int64_t>(version) == interfaceLevel_;
    return isUsual ? "" : "  version " + std::to_string(version);
  }

  // Describes a native function: "own" at its first use, then "like" and the member that used it first.
  std::string Function(const void* function, const std::string& label) {
    if (function == nullptr) return "none";
    if (function == zkt::kStandardAccessor) return "standard";
    const auto [first, isNew] = served_.try_emplace(function, owner_, label);
    if (isNew) return "own";
    const auto& [owner, name] = first->second;
    return "like " + (owner == owner_ ? "" : owner + ".") + name;
  }

  void WriteClass(const char* kind, const zkt::REALclassDefinition& type) {
    owner_ = type.name;
    out_ << kind << type.name;
    if (type.superName != nullptr) out_ << "  super " << type.superName;
    out_ << Flags(type.flags) << Version(type.version) << "  data " << type.dataSize << "  initializer "
         << Function(type.constructor, "initializer") << "  finalizer " << Function(type.destructor, "finalizer")
         << '\n';
  }

  void WriteAttributes(const zkt::REALattribute* attributes, std::uint64_t count) {
    for (const zkt::REALattribute& attribute : std::span(attributes, count))
      out_ << "  " << attribute.name << "=\"" << attribute.value << '"';
    out_ << '\n';
  }

  std::ostream& out_;
  std::int64_t interfaceLevel_;
  std::string owner_;
  std::map<const void*, std::pair<std::string, std::string>>
      served_;  // maps a function to the owner and label of its first use
};

}  // namespace

void WriteCatalogue(std::ostream& out, const Host& host) {
  if (host.withheld.contains("REALGetRBVersion"))
    out << "host without a version";
  else
    out << "host version " << std::fixed << std::setprecision(3) << host.version;
  out << "  interface level " << host.interfaceLevel << '\n';
  Writer writer(out, host);
  for (const Registration& registration : host.registrations) writer.Write(registration);
}

}  // namespace host
