// xojo-reference: keeps the declaration tables in the reference pages in sync with the plug-in's registrations. Each
// module and class has a page with its name. The rest of the page is written by hand.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "core/files.h"
#include "facts.h"
#include "services/plugin_library.h"

namespace {

// Returns whether the page has the current table. With `update`, writes the table first if necessary.
bool CheckPage(const std::string& path, const reference::Table& table, bool update) {
  std::string page = host::ReadFile(path);
  const std::string text = table.begin + table.text + reference::kEnd;
  const std::size_t begin = page.find(table.begin);
  const std::size_t end = page.find(reference::kEnd, begin);
  if (begin == std::string::npos || end == std::string::npos)
    throw std::runtime_error(path + ": the lines that enclose the table are missing:\n" + table.begin +
                             reference::kEnd);
  const std::size_t length = end + std::string_view(reference::kEnd).size() - begin;
  if (page.compare(begin, length, text) == 0) return true;
  if (update) host::WriteFile(path, page.replace(begin, length, text));
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
  for (const reference::Table& table : reference::MakeTables(plugin))
    isRight = CheckPage(std::filesystem::path(folder) / (table.owner + ".md"), table, update) && isRight;
  return isRight ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << "xojo-reference: " << error.what() << '\n';
  return 1;
}
