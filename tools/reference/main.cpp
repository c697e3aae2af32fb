// xojo-reference: keeps the tables of declarations in the reference pages in sync with what the plug-in registers. Each
// module and class has a page of the same name; the text around the table is written by hand.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "core/files.h"
#include "facts.h"
#include "services/plugin_library.h"

namespace {

// Whether the page has the current table. `update` writes it.
bool CheckPage(const std::string& path, const std::string& table, bool update) {
  std::string page = host::ReadFile(path);
  const std::size_t begin = page.find(reference::kBegin);
  const std::size_t end = page.find(reference::kEnd, begin);
  if (begin == std::string::npos || end == std::string::npos)
    throw std::runtime_error(path + ": missing the lines that enclose the table:\n" + reference::kBegin +
                             reference::kEnd);
  const std::size_t length = end + std::string_view(reference::kEnd).size() - begin;
  if (page.compare(begin, length, table) == 0) return true;
  if (update) host::WriteFile(path, page.replace(begin, length, table));
  if (!update) std::cerr << path << ": the table is out of date; run xojo-reference --update to rewrite it\n";
  return update;
}

}  // namespace

int main(int argumentCount, char** arguments) try {
  CLI::App app("Checks the tables of declarations in the reference pages.", "xojo-reference");
  std::string plugin = host::DefaultPlugin();
  std::string folder;
  bool update = false;
  app.add_option("--plugin", plugin, "Plug-in library to load (default: the one next to this program)");
  app.add_option("folder", folder, "Folder with the reference pages")->required()->check(CLI::ExistingDirectory);
  app.add_flag("--update", update, "Write the tables into the pages");
  CLI11_PARSE(app, argumentCount, arguments);
  bool isRight = true;
  for (const auto& [owner, table] : reference::MakeTables(plugin))
    isRight = CheckPage(std::filesystem::path(folder) / (owner + ".md"), table, update) && isRight;
  return isRight ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << "xojo-reference: " << error.what() << '\n';
  return 1;
}
