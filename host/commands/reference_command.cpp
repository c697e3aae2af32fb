// xojo-host reference: keeps the tables of facts in the pages of the reference true to what the plug-in registers. Each
// module and class has a page of its name; prose and examples around the table are written by hand.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <span>
#include <sstream>

#include "commands/commands.h"
#include "commands/markdown.h"
#include "core/host.h"
#include "frame/catalogue/declaration_syntax.h"
#include "language/catalogue_text.h"
#include "services/plugin_library.h"

namespace host {

namespace {

constexpr const char* kBegin = "<!-- facts: made by xojo-host reference --update -->";
constexpr const char* kEnd = "<!-- end of facts -->";

// The host versions at which declarations begin to exist, oldest first; the last stands for the present.
struct Gate {
  double version;
  const char* name;
};
constexpr Gate kGates[] = {{2010.0, "any"}, {2013.0, "2013r1"}, {2019.02, "2019r2"}, {2024.03, "2024r3"}};

struct Member {
  std::string owner;
  std::string kind;
  std::string declaration;
  std::uint32_t flags;
};

// Lists what is registered with this host, in its order.
class MemberList {
 public:
  std::vector<Member> Take() && { return std::move(members_); }

  void Add(const Registration& registration) {
    switch (registration.kind) {
      case Registration::kModule: {
        const auto& module = *static_cast<const zkt::REALmoduleDefinition*>(registration.record);
        AddMethods(module.name, "method", module.methods, module.methodCount);
        AddProperties(module.name, "property", module.properties, module.propertyCount);
        AddDelegates(module.name, module.delegates, module.delegateCount);
        break;
      }
      case Registration::kClass: {
        const auto& type = *static_cast<const zkt::REALclassDefinition*>(registration.record);
        if (type.superName != nullptr) Add(type.name, "super class", type.superName, type.flags);
        AddProperties(type.name, "property", type.properties, type.propertyCount);
        AddMethods(type.name, "method", type.methods, type.methodCount);
        AddProperties(type.name, "shared property", type.sharedProperties, type.sharedPropertyCount);
        AddMethods(type.name, "shared method", type.sharedMethods, type.sharedMethodCount);
        break;
      }
      case Registration::kClassExtension: {
        // On other hosts these are extension methods of a module, under this declaration.
        const auto& type = *static_cast<const zkt::REALclassDefinition*>(registration.record);
        for (const auto& method : std::span(type.methods, type.methodCount)) {
          std::string declaration = method.declaration;
          declaration.insert(declaration.find('(') + 1, std::string("extends ref as ") + type.name + ", ");
          Add("", "method", declaration, method.flags);
        }
        break;
      }
      case Registration::kMethod:
        AddMethods("", "method", static_cast<const zkt::REALmethodDefinition*>(registration.record), 1);
    }
  }

 private:
  void Add(const std::string& owner, const char* kind, const std::string& declaration, std::uint32_t flags) {
    members_.push_back({owner, kind, declaration, flags});
  }
  void AddMethods(const char* owner, const char* kind, const zkt::REALmethodDefinition* methods, std::uint64_t count) {
    for (const auto& method : std::span(methods, count)) Add(owner, kind, method.declaration, method.flags);
  }
  void AddProperties(const char* owner, const char* kind, const zkt::REALproperty* properties, std::uint64_t count) {
    for (const auto& property : std::span(properties, count))
      Add(owner, kind,
          std::string(property.name) + " As " + property.type + (property.setter != nullptr ? "" : " (read-only)"),
          property.flags);
  }
  void AddDelegates(const char* owner, const zkt::REALdelegate* delegates, std::uint64_t count) {
    for (const auto& delegate : std::span(delegates, count))
      Add(owner, "delegate", delegate.declaration, delegate.flags);
  }

  std::vector<Member> members_;
};

// What a host of a version is told, found out in a process of its own: a library registers once.
std::vector<Member> MembersAt(const std::string& plugin, double version) {
  const std::string file = std::filesystem::temp_directory_path() / ("xojo-host-" + std::to_string(getpid()));
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("cannot start a process");
  if (child == 0) {
    Host::Current().version = version;
    LoadPlugin(plugin);
    MemberList list;
    for (const Registration& registration : Host::Current().registrations) list.Add(registration);
    std::ofstream out(file, std::ios::binary);
    for (const Member& member : std::move(list).Take())
      out << member.owner << '\t' << member.kind << '\t' << member.declaration << '\t' << member.flags << '\n';
    out.close();
    _exit(out ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error("the plug-in cannot be loaded by a host of another version");
  std::vector<Member> members;
  for (const std::string& line : ReadPage(file)) {
    std::istringstream fields(line);
    Member member{};
    std::getline(fields, member.owner, '\t');
    std::getline(fields, member.kind, '\t');
    std::getline(fields, member.declaration, '\t');
    fields >> member.flags;
    members.push_back(std::move(member));
  }
  std::filesystem::remove(file);
  return members;
}

// Members of one shape are shown once, with the element types that they exist for.
struct Family {
  std::string kind;
  std::string shape;
  std::string types;
  std::string projects;
  std::string since;
};

// The declaration with T in the place of the element type, which is that of the first parameter if it is an array.
std::pair<std::string, std::string> ShapeOf(const std::string& declaration) {
  const zkt::ParsedDeclaration parsed = zkt::ParseDeclaration(declaration);
  if (!parsed.IsValid() || parsed.parameterCount == 0) return {declaration, ""};
  const std::string_view element = parsed.parameters[0].type.name;
  const bool isDelegate = declaration.starts_with("SortVariantDelegate");
  if (!parsed.parameters[0].type.isArray && !isDelegate) return {declaration, ""};
  std::string shape;
  std::size_t done = 0;
  const auto replace = [&](std::string_view part, const std::string& by) {
    const auto begin = static_cast<std::size_t>(part.data() - declaration.data());
    shape += declaration.substr(done, begin - done) + by;
    done = begin + part.size();
  };
  const std::string own = "SortVariantDelegate" + std::string(element) + "ZKT";
  if (isDelegate) replace(parsed.name, "SortVariantDelegateTZKT");
  for (const auto& parameter : std::span(parsed.parameters).first(parsed.parameterCount)) {
    if (zkt::IsSameName(parameter.type.name, own)) replace(parameter.type.name, "SortVariantDelegateTZKT");
    if (zkt::IsSameName(parameter.type.name, element) && parameter.defaultValue.empty())
      replace(parameter.type.name, "T");
  }
  return {shape + declaration.substr(done), std::string(element)};
}

std::string ProjectsOf(std::uint32_t flags) {
  if ((flags & zkt::kConsoleSafe) != 0) return "all";
  std::ostringstream text;
  text << "target bits 0x" << std::hex << (flags & zkt::kTargetMask);
  return text.str();
}

class Reference {
 public:
  explicit Reference(const std::string& plugin) {
    std::map<std::string, const char*> since;
    for (const Gate& gate : kGates) {
      members_ = MembersAt(plugin, gate.version);
      for (const Member& member : members_) since.try_emplace(KeyOf(member), gate.name);
    }
    for (const Member& member : members_) {
      const auto [shape, type] = ShapeOf(member.declaration);
      const Family wanted{member.kind, shape, type, ProjectsOf(member.flags), since[KeyOf(member)]};
      auto& families = pages_[member.owner];
      const auto found = std::ranges::find_if(families, [&](const Family& family) {
        return family.shape == wanted.shape && family.projects == wanted.projects && family.since == wanted.since;
      });
      if (found == families.end())
        families.push_back(wanted);
      else
        found->types += ", " + type;
    }
  }

  std::vector<std::string> Owners() const {
    std::vector<std::string> owners;
    for (const auto& page : pages_) owners.push_back(page.first);
    return owners;
  }

  std::vector<std::string> FactsOf(const std::string& owner) const {
    const auto& families = pages_.at(owner);
    const bool hasTypes = std::ranges::any_of(families, [](const Family& family) { return !family.types.empty(); });
    std::vector<std::string> lines = {
        kBegin, std::string("| Kind | Declaration |") + (hasTypes ? " T |" : "") + " Projects | Since |",
        std::string("|---|---|") + (hasTypes ? "---|" : "") + "---|---|"};
    for (const Family& family : families)
      lines.push_back("| " + family.kind + " | " + InCode(family.shape) + (hasTypes ? " | " + family.types : "") +
                      " | " + family.projects + " | " + family.since + " |");
    lines.emplace_back(kEnd);
    return lines;
  }

 private:
  // Global methods are members of a module on some hosts only.
  static std::string KeyOf(const Member& member) {
    const bool isGlobal = member.owner.empty() || member.owner == "UtilGlobalsZKT";
    return (isGlobal ? "" : member.owner) + '\t' + member.declaration;
  }

  std::vector<Member> members_;
  std::map<std::string, std::vector<Family>> pages_;
};

// Whether the page shows the facts. Updating makes it so, but not for a page that does not say where they belong.
bool CheckPage(const std::string& file, const std::vector<std::string>& facts, bool update) {
  std::vector<std::string> page = ReadPage(file);
  const auto begin = std::ranges::find(page, kBegin);
  const auto end = std::find(begin, page.end(), kEnd);
  if (end == page.end()) throw std::runtime_error(file + " has no place for facts");
  if (std::equal(begin, end + 1, facts.begin(), facts.end())) return true;
  if (!update) {
    std::cerr << file << ": the facts are not those that the plug-in registers\n";
    return false;
  }
  ReplaceLines(page, static_cast<std::size_t>(begin - page.begin()), static_cast<std::size_t>(end + 1 - page.begin()),
               facts);
  WritePage(file, page);
  return true;
}

}  // namespace

int RunReference(const std::string& plugin, const std::string& folder, bool update) {
  const Reference reference(plugin);
  bool isRight = true;
  for (const std::string& owner : reference.Owners()) try {
      isRight = CheckPage(std::filesystem::path(folder) / (owner + ".md"), reference.FactsOf(owner), update) && isRight;
    } catch (const std::exception& error) {
      std::cerr << error.what() << '\n';
      isRight = false;
    }
  return isRight ? 0 : 1;
}

}  // namespace host
