#include "services/plugin_library.h"

#include <dlfcn.h>

#include <filesystem>

#include "services/services.h"

namespace host {

std::string DefaultPlugin() { return std::filesystem::canonical("/proc/self/exe").parent_path() / "ZKTUtil.so"; }

void* OpenLibrary(const std::string& path) {
  void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(dlerror());
  return library;
}

void LoadPlugin(const std::string& path, zkt::Resolver resolver) {
  void* const library = OpenLibrary(path);
  using Entry = void (*)(zkt::Resolver);
  const auto entry = reinterpret_cast<Entry>(dlsym(library, "REALPluginMain"));
  if (entry == nullptr) throw std::runtime_error(path + " is not a plug-in: it does not export REALPluginMain");
  entry(resolver);
}

void LoadPlugin(const std::string& path) { LoadPlugin(path, &Resolve); }

}  // namespace host
