#include "facts.h"

#include <algorithm>
#include <iostream>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

#include "core/child_output.h"
#include "declarations/members.h"
#include "frame/catalogue/declaration_syntax.h"
#include "services/plugin_library.h"

namespace reference {

namespace {

// Host versions and their names in the tables. A declaration that none of these versions has is new in kNow.
struct Gate {
  double version;
  const char* name;
};
constexpr Gate kGates[] = {{2010.0, "any"}, {2013.0, "2013r1"}, {2019.02, "2019r2"}};
constexpr const char* kNow = "2024r3";

struct Row {
  std::string owner;
  host::MemberText text;
  std::string key;  // the same on every host version
};

Row RowOf(const host::Member& member) {
  Row row{member.owner, host::TextOf(member), ""};
  const auto* const property = member.As<zkt::REALproperty>();
  if (property != nullptr && property->setter == nullptr) row.text.declaration += " (read-only)";
  const bool extends = member.ownerKind == host::OwnerKind::kClassExtension;
  const bool isGlobal =
      extends || member.ownerKind == host::OwnerKind::kNone || (row.text.flags & zkt::kGlobalScope) != 0;
  // Depending on the host version, a global method may be a member of a module, and an extension method may be a member
  // of a class. The key is the same either way.
  row.key = row.text.declaration;
  if (extends) row.key.insert(row.key.find('(') + 1, "extends ref as " + row.owner + ", ");
  if (!isGlobal) row.key += " in " + row.owner;
  return row;
}

// Returns the rows for this host's registrations, in order.
std::vector<Row> RegisteredRows() {
  std::vector<Row> rows;
  for (const host::Registration& registration : host::Host::Current().registrations) {
    const auto* const type = std::get_if<zkt::REALclassDefinition*>(&registration);
    if (type != nullptr && (*type)->superName != nullptr)
      rows.push_back({(*type)->name, {"super class", (*type)->superName, (*type)->flags}, (*type)->name});
    for (const host::Member& member : host::MembersOf(registration)) rows.push_back(RowOf(member));
  }
  return rows;
}

std::set<std::string> KeysAt(const std::string& plugin, double version) {
  std::istringstream lines(host::OutputOf([&] {
    host::Host::Current().version = version;
    host::LoadPlugin(plugin);
    for (const Row& row : RegisteredRows()) std::cout << row.key << '\n';
  }));
  std::set<std::string> keys;
  for (std::string line; std::getline(lines, line);) keys.insert(line);
  return keys;
}

// Declarations that differ only in the element type share a row of the table.
struct Family {
  std::string declaration;  // with T in place of the element type
  std::string elementType;  // empty for a declaration without a family
};

// The element type is the type of the first parameter, if that parameter is an array or a delegate's name contains the
// type.
Family FamilyOf(const host::MemberText& row) {
  const zkt::ParsedDeclaration parsed = zkt::ParseDeclaration(row.declaration);
  if (!parsed.IsValid() || parsed.parameterCount == 0) return {row.declaration, ""};
  const std::string element(parsed.parameters[0].type.name);
  const bool isNamed = row.kind == "delegate" && parsed.name.find(element) != std::string_view::npos;
  if (!parsed.parameters[0].type.isArray && !isNamed) return {row.declaration, ""};
  // Matches the types of required parameters, and delegate names that contain the type.
  const std::regex uses("(^\\w*| as \\w*)" + element + "(\\w*)\\b(?! =)", std::regex::icase);
  const auto parameters = row.declaration.rfind(')');
  return {std::regex_replace(row.declaration.substr(0, parameters), uses, "$1T$2") + row.declaration.substr(parameters),
          element};
}

std::string ProjectsOf(std::uint32_t flags) {
  if ((flags & zkt::kConsoleSafe) != 0) return "all";
  constexpr std::pair<std::uint32_t, const char*> kTargets[] = {{zkt::kTargetDesktop, "desktop"},
                                                                {zkt::kTargetWeb, "web"},
                                                                {zkt::kTargetConsole, "console"},
                                                                {zkt::kTargetIOS, "iOS"}};
  std::string projects;
  for (const auto& [bit, name] : kTargets)
    if ((flags & bit) != 0) projects += (projects.empty() ? "" : ", ") + std::string(name);
  return projects;
}

// Formats a string as code in a table cell. An unescaped bar would end the cell.
std::string InCode(const std::string& text) { return "`" + std::regex_replace(text, std::regex("\\|"), "\\|") + "`"; }

struct TableRow {
  std::string kind, declaration, types, projects, since;
};

std::string TableOf(const std::vector<TableRow>& rows) {
  const bool hasTypes = std::ranges::any_of(rows, [](const TableRow& row) { return !row.types.empty(); });
  std::string table = hasTypes ? "| Kind | Declaration | T | Projects | Since |\n|---|---|---|---|---|\n"
                               : "| Kind | Declaration | Projects | Since |\n|---|---|---|---|\n";
  for (const TableRow& row : rows)
    table += "| " + row.kind + " | " + InCode(row.declaration) + (hasTypes ? " | " + row.types : "") + " | " +
             row.projects + " | " + row.since + " |\n";
  return table;
}

// An array method for one element type.
struct ArrayMethod {
  std::string name, elementType, since;
};

// Returns the distinct values of the member `what`, in order of first appearance.
std::vector<std::string> NamesOf(const std::vector<ArrayMethod>& methods, std::string ArrayMethod::*what) {
  std::vector<std::string> names;
  for (const ArrayMethod& method : methods)
    if (std::ranges::find(names, method.*what) == names.end()) names.push_back(method.*what);
  return names;
}

// Returns a matrix of element types and methods. Each cell shows the first version that has the method for the type.
std::string MatrixOf(const std::vector<ArrayMethod>& methods) {
  const std::vector<std::string> names = NamesOf(methods, &ArrayMethod::name);
  std::string matrix = "| Element type |";
  std::string line = "|---|";
  for (const std::string& name : names) {
    matrix += ' ' + name + " |";
    line += "---|";
  }
  matrix += '\n' + line + '\n';
  std::vector<std::string> types = NamesOf(methods, &ArrayMethod::elementType);
  std::ranges::sort(types);
  for (const std::string& type : types) {
    matrix += "| " + type + " |";
    for (const std::string& name : names) {
      const auto found = std::ranges::find_if(
          methods, [&](const ArrayMethod& method) { return method.name == name && method.elementType == type; });
      matrix += (found == methods.end() ? "" : ' ' + found->since) + " |";
    }
    matrix += '\n';
  }
  return matrix;
}

}  // namespace

Tables MakeTables(const std::string& plugin) {
  std::map<std::string, const char*> since;
  for (const Gate& gate : kGates)
    for (const std::string& key : KeysAt(plugin, gate.version)) since.try_emplace(key, gate.name);
  host::LoadPlugin(plugin);
  std::map<std::string, std::vector<TableRow>> pages;
  std::vector<ArrayMethod> arrayMethods;
  for (const Row& row : RegisteredRows()) {
    const auto [declaration, type] = FamilyOf(row.text);
    const TableRow wanted{row.text.kind, declaration, type, ProjectsOf(row.text.flags),
                          since.try_emplace(row.key, kNow).first->second};
    if (row.text.kind == "method" && declaration.find("(extends ") != std::string::npos && !type.empty()) {
      const bool byDelegate = declaration.find("theDelegate") != std::string::npos;
      const std::string name = InCode(declaration.substr(0, declaration.find('(')));
      arrayMethods.push_back({name + (byDelegate ? " by delegate" : ""), type, wanted.since});
    }
    std::vector<TableRow>& rows = pages[row.owner];
    const auto found = std::ranges::find_if(rows, [&](const TableRow& other) {
      return std::tie(other.declaration, other.projects, other.since) ==
             std::tie(wanted.declaration, wanted.projects, wanted.since);
    });
    if (found == rows.end())
      rows.push_back(wanted);
    else
      found->types += ", " + type;
  }
  Tables tables;
  for (const auto& [owner, rows] : pages) tables.push_back({owner, kBegin, TableOf(rows)});
  tables.push_back({"SortZKT", kBeginOfMatrix, MatrixOf(arrayMethods)});
  return tables;
}

}  // namespace reference
