// xojo-projects: generates the Xojo projects in examples/xojo from the example scripts, or checks that they are up to
// date.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "core/files.h"
#include "projects.h"

namespace {

namespace fs = std::filesystem;

projects::Files ReadFolder(const fs::path& folder) {
  projects::Files files;
  if (!fs::exists(folder)) return files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files[entry.path().lexically_relative(folder)] = host::ReadFile(entry.path());
  return files;
}

void Update(const fs::path& folder, const projects::Files& wanted, const projects::Files& present) {
  for (const auto& [path, text] : present)
    if (!wanted.contains(path)) fs::remove(folder / path);
  for (const auto& [path, text] : wanted) {
    fs::create_directories((folder / path).parent_path());
    host::WriteFile(folder / path, text);
  }
}

bool Check(const fs::path& folder, const projects::Files& wanted, const projects::Files& present) {
  bool isRight = true;
  const auto Report = [&](const std::string& path, const char* problem) {
    std::cerr << (folder / path).string() << ": " << problem << "; ./dev update corrects it\n";
    isRight = false;
  };
  for (const auto& [path, text] : present)
    if (!wanted.contains(path)) Report(path, "no project has this file");
  for (const auto& [path, text] : wanted) {
    const auto found = present.find(path);
    if (found == present.end() || found->second != text) Report(path, "missing, or differs from the example scripts");
  }
  return isRight;
}

}  // namespace

int main(int argumentCount, char** arguments) try {
  CLI::App app("Checks that the Xojo projects match the example scripts.", "xojo-projects");
  std::string templates, examples;
  bool update = false;
  app.add_option("templates", templates, "Folder with the project templates")
      ->required()
      ->check(CLI::ExistingDirectory);
  app.add_option("examples", examples, "Folder with the examples")->required()->check(CLI::ExistingDirectory);
  app.add_flag("--update", update, "Write the projects");
  CLI11_PARSE(app, argumentCount, arguments);
  const fs::path folder = fs::path(examples) / "xojo";
  const projects::Files wanted = projects::MakeProjects(examples, templates);
  if (!update) return Check(folder, wanted, ReadFolder(folder)) ? 0 : 1;
  Update(folder, wanted, ReadFolder(folder));
  return 0;
} catch (const std::exception& error) {
  std::cerr << "xojo-projects: " << error.what() << '\n';
  return 1;
}
