#include "language/catalogue_text.h"

#include <iomanip>
#include <map>
#include <ostream>
#include <span>
#include <sstream>

namespace host {

namespace {

std::string Hex(std::uint32_t flags) {
  std::ostringstream text;
  text << "0x" << std::hex << std::uppercase << flags;
  return text.str();
}

std::string AttributesOf(const zkt::REALattribute* attributes, std::uint64_t count) {
  std::string text;
  for (const zkt::REALattribute& attribute : std::span(attributes, count))
    text += std::string("  ") + attribute.name + "=\"" + attribute.value + "\"";
  return text;
}

// Writes records as text.
class TextWriter {
 public:
  explicit TextWriter(std::ostream& out) : out_(out) {}

  void Write(const Registration& registration) {
    switch (registration.kind) {
      case Registration::kModule:
        return WriteModule(*static_cast<const zkt::REALmoduleDefinition*>(registration.record));
      case Registration::kClass:
        return WriteClass("class", *static_cast<const zkt::REALclassDefinition*>(registration.record));
      case Registration::kClassExtension:
        return WriteClass("class extension", *static_cast<const zkt::REALclassDefinition*>(registration.record));
      case Registration::kMethod:
        return WriteMethod("global method", *static_cast<const zkt::REALmethodDefinition*>(registration.record));
    }
  }

 private:
  // "#3" for the third native function that was met.
  std::string Number(const void* function) {
    if (function == nullptr) return "none";
    if (function == zkt::kStandardAccessor) return "standard";
    return "#" + std::to_string(numbers_.try_emplace(function, numbers_.size() + 1).first->second);
  }

  void WriteModule(const zkt::REALmoduleDefinition& module) {
    out_ << "module " << module.name << "  flags " << Hex(module.flags) << "  version " << module.version << '\n';
    WriteMethods("method", module.methods, module.methodCount);
    WriteProperties("property", module.properties, module.propertyCount);
    WriteDelegates(module.delegates, module.delegateCount);
  }

  void WriteClass(const char* kind, const zkt::REALclassDefinition& type) {
    out_ << kind << ' ' << type.name;
    if (type.superName != nullptr) out_ << "  super " << type.superName;
    out_ << "  flags " << Hex(type.flags) << "  version " << type.version << "  data " << type.dataSize
         << "  initializer " << Number(type.constructor) << "  finalizer " << Number(type.destructor) << '\n';
    WriteProperties("property", type.properties, type.propertyCount);
    WriteMethods("method", type.methods, type.methodCount);
    WriteProperties("shared property", type.sharedProperties, type.sharedPropertyCount);
    WriteMethods("shared method", type.sharedMethods, type.sharedMethodCount);
    WriteDelegates(type.delegates, type.delegateCount);
  }

  void WriteMethods(const char* kind, const zkt::REALmethodDefinition* methods, std::uint64_t count) {
    if (count > 0) out_ << "  " << kind << "s: " << count << '\n';
    for (const zkt::REALmethodDefinition& method : std::span(methods, count)) WriteMethod(kind, method);
  }

  void WriteMethod(const char* kind, const zkt::REALmethodDefinition& method) {
    out_ << "  " << kind << ' ' << Hex(method.flags) << ' ' << Number(method.function);
    if (method.setter != nullptr) out_ << " setter " << Number(method.setter);
    out_ << "  " << method.declaration << AttributesOf(method.attributes, method.attributeCount) << '\n';
  }

  void WriteProperties(const char* kind, const zkt::REALproperty* properties, std::uint64_t count) {
    for (const zkt::REALproperty& property : std::span(properties, count))
      out_ << "  " << kind << ' ' << Hex(property.flags) << ' ' << property.name << " As " << property.type
           << "  getter " << Number(property.getter) << "  setter " << Number(property.setter) << "  parameter "
           << property.parameter << AttributesOf(property.attributes, property.attributeCount) << '\n';
  }

  void WriteDelegates(const zkt::REALdelegate* delegates, std::uint64_t count) {
    if (count > 0) out_ << "  delegates: " << count << '\n';
    for (const zkt::REALdelegate& delegate : std::span(delegates, count))
      out_ << "  delegate " << Hex(delegate.flags) << "  " << delegate.declaration << '\n';
  }

  std::ostream& out_;
  std::map<const void*, std::size_t> numbers_;
};

// Writes records as tables of kind, declaration and flags.
class MarkdownWriter {
 public:
  explicit MarkdownWriter(std::ostream& out) : out_(out) {}

  void Write(const Registration& registration) {
    switch (registration.kind) {
      case Registration::kModule:
        return WriteModule(*static_cast<const zkt::REALmoduleDefinition*>(registration.record));
      case Registration::kClass:
        return WriteClass("Class", *static_cast<const zkt::REALclassDefinition*>(registration.record));
      case Registration::kClassExtension:
        return WriteClass("Class extension", *static_cast<const zkt::REALclassDefinition*>(registration.record));
      case Registration::kMethod:
        if (!inGlobalMethods_) BeginTable("Global methods");
        inGlobalMethods_ = true;
        return WriteMethod("method", *static_cast<const zkt::REALmethodDefinition*>(registration.record));
    }
  }

 private:
  // The table's head is written with its first row.
  void BeginTable(const std::string& title) {
    if (inGlobalMethods_) EndTable();
    inGlobalMethods_ = false;
    isTableOpen_ = false;
    out_ << "## " << title << "\n\n";
  }

  void WriteRow(const char* kind, const std::string& declaration, std::uint32_t flags) {
    if (!isTableOpen_) out_ << "| Kind | Declaration | Flags |\n|---|---|---|\n";
    isTableOpen_ = true;
    out_ << "| " << kind << " | " << InCode(declaration) << " | " << Hex(flags) << " |\n";
  }

  void EndTable() {
    if (isTableOpen_) out_ << '\n';
  }

  void WriteMethod(const char* kind, const zkt::REALmethodDefinition& method) {
    WriteRow(kind, method.declaration, method.flags);
  }

  void WriteModule(const zkt::REALmoduleDefinition& module) {
    BeginTable(std::string("Module ") + module.name);
    for (const auto& method : std::span(module.methods, module.methodCount)) WriteMethod("method", method);
    WriteProperties("property", module.properties, module.propertyCount);
    WriteDelegates(module.delegates, module.delegateCount);
    EndTable();
  }

  void WriteClass(const char* kind, const zkt::REALclassDefinition& type) {
    BeginTable(std::string(kind) + " " + type.name);
    if (type.superName != nullptr) out_ << "Super class: " << InCode(type.superName) << "\n\n";
    WriteProperties("property", type.properties, type.propertyCount);
    for (const auto& method : std::span(type.methods, type.methodCount)) WriteMethod("method", method);
    WriteProperties("shared property", type.sharedProperties, type.sharedPropertyCount);
    for (const auto& method : std::span(type.sharedMethods, type.sharedMethodCount))
      WriteMethod("shared method", method);
    WriteDelegates(type.delegates, type.delegateCount);
    EndTable();
  }

  void WriteProperties(const char* kind, const zkt::REALproperty* properties, std::uint64_t count) {
    for (const zkt::REALproperty& property : std::span(properties, count))
      WriteRow(kind, std::string(property.name) + " As " + property.type + (property.setter ? "" : " (read-only)"),
               property.flags);
  }

  void WriteDelegates(const zkt::REALdelegate* delegates, std::uint64_t count) {
    for (const zkt::REALdelegate& delegate : std::span(delegates, count))
      WriteRow("delegate", delegate.declaration, delegate.flags);
  }

  std::ostream& out_;
  bool inGlobalMethods_ = false;
  bool isTableOpen_ = false;
};

}  // namespace

std::string InCode(const std::string& text) {
  std::string fence = "`";
  while (text.find(fence) != std::string::npos) fence += '`';
  std::string code;
  for (const char c : text) code += c == '|' ? "\\|" : std::string(1, c);
  const std::string space = fence.size() > 1 ? " " : "";
  return fence + space + code + space + fence;
}

void WriteCatalogueText(std::ostream& out, const Host& host) {
  if (host.withheld.contains("REALGetRBVersion"))
    out << "host without a version";
  else
    out << "host version " << std::fixed << std::setprecision(3) << host.version;
  out << "  interface level " << host.interfaceLevel << '\n';
  TextWriter writer(out);
  for (const Registration& registration : host.registrations) writer.Write(registration);
}

void WriteCatalogueMarkdown(std::ostream& out, const Host& host) {
  MarkdownWriter writer(out);
  for (const Registration& registration : host.registrations) writer.Write(registration);
}

}  // namespace host
