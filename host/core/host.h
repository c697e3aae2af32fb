// The development host as a plug-in sees it. Only one thread may use it at a time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "core/fault_injector.h"
#include "core/objects.h"
#include "frame/contract/plugin_interface.h"

namespace host {

// A record that adds members to one of the host's classes.
struct ClassExtension {
  zkt::REALclassDefinition* record;
  bool operator==(const ClassExtension&) const = default;
};

// Anything that a plug-in can register.
using Registration =
    std::variant<zkt::REALmoduleDefinition*, zkt::REALclassDefinition*, ClassExtension, zkt::REALmethodDefinition*>;

class Host {
 public:
  // The host that the services use.
  static Host& Current() {
    static Host host;
    return host;
  }

  // The year, with the release in hundredths: 2019.02 is 2019 release 2.
  double version = 2024.03;
  // Whether the host is a built application rather than the development environment.
  bool isBuiltApplication = false;
  // What the host withholds: services by name, and framework functions and object methods by declaration.
  std::set<std::string, std::less<>> withheld;
  // Whether the string data that plug-ins request ends with a zero byte.
  bool terminatesStringData = true;
  // Makes services fail to create strings, objects and arrays.
  FaultInjector creationFailures;
  // Makes service calls throw. Retain and release never throw, because otherwise no plug-in could keep its references
  // balanced.
  FaultInjector serviceFailures;
  // Whether lookups return instrumented services, which can throw and can be called on several threads.
  bool instrumentsServices = false;

  // The plug-in's interface level, its registrations in order, and the host's class object for each registered class.
  std::int32_t interfaceLevel = 0;
  std::vector<Registration> registrations;
  std::vector<std::unique_ptr<ObjectClass>> objectClasses;

  auto Modules() const { return Registered<zkt::REALmoduleDefinition*>(); }
  auto Classes() const { return Registered<zkt::REALclassDefinition*>(); }
  auto ClassExtensions() const { return Registered<ClassExtension>(); }
  auto GlobalMethods() const { return Registered<zkt::REALmethodDefinition*>(); }
  // Returns the registrations of one kind.
  template <class Kind>
  std::vector<Kind> Registered() const {
    std::vector<Kind> all;
    for (const Registration& registration : registrations)
      if (const Kind* const record = std::get_if<Kind>(&registration)) all.push_back(*record);
    return all;
  }

  // Number of lookups of each service, including missing services.
  std::map<std::string, int, std::less<>> lookupCounts;

  // Number of requests for string data. Each request converts the string to the requested encoding.
  int conversionCount = 0;
};

}  // namespace host
