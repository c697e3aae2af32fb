// xojo-host stress: starts xojo-stress, which is a separate program because it replaces malloc.
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "commands/commands.h"
#include "core/host.h"
#include "services/missing.h"
#include "services/plugin_library.h"

namespace host {

int RunStress(const std::string& name, const std::string& plugin, const std::vector<std::string>& arguments) {
  const std::filesystem::path program = std::filesystem::canonical("/proc/self/exe").parent_path() / "xojo-stress";
  const Host& host = Host::Current();
  char version[32] = {};
  std::to_chars(version, std::end(version) - 1, host.version);
  // The user's options come last, so they override these. The replay commands that xojo-stress prints begin with the
  // same words.
  std::vector<std::string> words = {name, "--host-version", version};
  if (plugin != DefaultPlugin()) words.insert(words.end(), {"--plugin", plugin});
  if (gMissing.areTrapped) words.emplace_back("--trap-missing");
  for (const std::string& service : host.withheld) words.insert(words.end(), {"--withhold", service});
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  ::execv(program.c_str(), pointers.data());
  throw std::system_error(errno, std::generic_category(), "cannot run " + program.string());
}

}  // namespace host
