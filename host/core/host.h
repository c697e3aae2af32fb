// The development host: what a plug-in meets when it is loaded. One thread uses it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/objects.h"
#include "core/shortage.h"
#include "frame/contract/plugin_interface.h"

namespace host {

// Something that a plug-in has registered.
struct Registration {
  enum Kind { kModule, kClass, kClassExtension, kMethod } kind;
  const void* record;
};

class Host {
 public:
  // The host that the services belong to.
  static Host& Current();

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

  // What the plug-in has told and registered: everything in its order, and by kind.
  std::int32_t interfaceLevel = 0;
  std::vector<Registration> registrations;
  std::vector<zkt::REALmoduleDefinition*> modules;
  std::vector<zkt::REALclassDefinition*> classes;
  std::vector<std::unique_ptr<ObjectClass>> objectClasses;  // what `classes` are to the host's objects
  std::vector<zkt::REALclassDefinition*> classExtensions;
  std::vector<zkt::REALmethodDefinition*> globalMethods;

  // How often each service has been asked for, those that are missing included.
  std::map<std::string, int, std::less<>> questions;

  // How often a string's text has been asked for in another encoding.
  int conversions = 0;
};

// The native function of a method, by the name that its declaration begins with; null when it is not registered.
void* FindNativeFunction(const Host& host, std::string_view methodName);

}  // namespace host
