#include "services/plugin_library.h"

#include <dlfcn.h>

#include <filesystem>

#include "core/running_function.h"
#include "services/crash_report.h"

namespace host {

std::string DefaultPlugin() { return std::filesystem::canonical("/proc/self/exe").parent_path() / "ZKTUtil.so"; }

void* OpenLibrary(const std::string& path) {
  // If the path had no folder, the loader would use its search path.
  void* const library = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  SetReportedPlugin(library);
  return library;
}

void LoadPlugin(const std::string& path, zkt::Resolver resolver) {
  void* const library = OpenLibrary(path);
  using Entry = void (*)(zkt::Resolver);
  const auto entry = reinterpret_cast<Entry>(dlsym(library, "REALPluginMain"));
  if (entry == nullptr) throw std::runtime_error(path + " is not a plug-in: it does not export REALPluginMain");
  const RunningFunction running(reinterpret_cast<void*>(entry));
  entry(resolver);
  SetReportedMembers(MembersOf(Host::Current()));
}

}  // namespace host
