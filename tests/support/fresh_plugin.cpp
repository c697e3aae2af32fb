#include "support/fresh_plugin.h"

#include <unistd.h>

#include <filesystem>

#include "services/plugin_library.h"

namespace tests {

std::string LoadFreshPlugin(zkt::Resolver resolver, const char* library) {
  static int loads = 0;
  host::Host& host = host::Host::Current();
  host.interfaceLevel = 0;
  host.registrations.clear();
  host.objectClasses.clear();
  host.lookupCounts.clear();
  const std::filesystem::path copy = std::filesystem::temp_directory_path() /
                                     ("ZKTUtil-" + std::to_string(::getpid()) + "-" + std::to_string(++loads) + ".so");
  std::filesystem::copy_file(library, copy, std::filesystem::copy_options::overwrite_existing);
  host::LoadPlugin(copy, resolver);
  std::filesystem::remove(copy);
  return copy.string();
}

}  // namespace tests
