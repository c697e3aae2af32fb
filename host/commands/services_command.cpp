// xojo-host services: lists the services of this host, and the missing services that a plug-in requests.
#include <algorithm>
#include <iostream>

#include "commands/commands.h"
#include "services/missing.h"
#include "services/plugin_library.h"
#include "services/services.h"

namespace host {

int RunServices(const std::string& plugin) {
  std::vector<std::string> names = WithholdableNames();
  std::erase_if(names, [](const std::string& name) { return Host::Current().withheld.contains(name); });
  std::cout << "This host offers " << names.size() << " services, framework functions and object methods:\n";
  for (const std::string& name : names) std::cout << "  " << name << '\n';
  if (plugin.empty()) return 0;
  LoadPlugin(plugin);
  const std::vector<std::string>& missing = gMissing.names;
  std::cout << "While loading, " << plugin << " requested "
            << (missing.empty() ? "nothing else.\n" : "these services, which the host does not offer:\n");
  for (const std::string& name : missing) std::cout << "  " << name << '\n';
  return missing.empty() ? 0 : 1;
}

}  // namespace host
