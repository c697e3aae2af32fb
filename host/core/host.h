// The development host: what a plug-in meets when it is loaded. One thread uses it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "core/objects.h"
#include "core/shortage.h"
#include "frame/contract/plugin_interface.h"

namespace host {

// A record that gives a class of the host more members.
struct ClassExtension {
  zkt::REALclassDefinition* record;
  bool operator==(const ClassExtension&) const = default;
};

// Something that a plug-in has registered.
using Registration =
    std::variant<zkt::REALmoduleDefinition*, zkt::REALclassDefinition*, ClassExtension, zkt::REALmethodDefinition*>;

class Host {
 public:
  // The host that the services belong to.
  static Host& Current() {
    static Host host;
    return host;
  }

  // Year plus release as a fraction: 2019.02 is 2019 release 2.
  double version = 2024.03;
  // Whether this is a built application, and not the development environment.
  bool isBuiltApplication = false;
  // Services that are not offered, by name; framework functions and methods of objects by their declaration.
  std::set<std::string, std::less<>> withheld;
  // Whether converted text is handed out with a zero byte behind it.
  bool terminatesStringData = true;
  // Of strings, objects and arrays that services make.
  Shortage shortage;
  // Of calls of services that throw, except those that count references: no plug-in can keep them right then.
  Shortage serviceFailures;
  // Whether services that are asked for from now on can fail like that, and be called on several threads.
  bool supervisesServices = false;

  // What the plug-in has told and registered, in its order, and what its classes are to the host's objects.
  std::int32_t interfaceLevel = 0;
  std::vector<Registration> registrations;
  std::vector<std::unique_ptr<ObjectClass>> objectClasses;

  auto Modules() const { return Registered<zkt::REALmoduleDefinition*>(); }
  auto Classes() const { return Registered<zkt::REALclassDefinition*>(); }
  auto ClassExtensions() const { return Registered<ClassExtension>(); }
  auto GlobalMethods() const { return Registered<zkt::REALmethodDefinition*>(); }
  // The registrations of one kind.
  template <class Kind>
  std::vector<Kind> Registered() const {
    std::vector<Kind> all;
    for (const Registration& registration : registrations)
      if (const Kind* const record = std::get_if<Kind>(&registration)) all.push_back(*record);
    return all;
  }

  // How often each service has been asked for, those that are missing included.
  std::map<std::string, int, std::less<>> questions;

  // How often a string's text has been asked for in another encoding.
  int conversions = 0;
};

}  // namespace host
