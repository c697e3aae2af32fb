#include "script.h"

#include <cctype>
#include <filesystem>
#include <sstream>

#include "core/files.h"

namespace projects {

namespace {

std::string PascalCase(const std::string& words) {
  std::string name;
  bool isStart = true;
  for (const char character : words) {
    if (character != '_') name += isStart ? static_cast<char>(std::toupper(character)) : character;
    isStart = character == '_';
  }
  return name;
}

// Only code at the top level starts in the first column.
bool StartsMethod(const std::string& line) { return line.starts_with("Function ") || line.starts_with("Sub "); }
bool EndsMethod(const std::string& line) { return line.starts_with("End Function") || line.starts_with("End Sub"); }

}  // namespace

Lines SplitIntoLines(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Script ReadScript(const std::string& path) {
  const std::filesystem::path file(path);
  const std::string code = host::ReadFile(path);
  Script script{file.filename(), PascalCase(file.stem()), {}, {}, {}, code.find("MessageBox(") != std::string::npos};
  bool isInMethod = false;
  for (const std::string& line : SplitIntoLines(code)) {
    if (StartsMethod(line)) script.methods.emplace_back();
    isInMethod = isInMethod || StartsMethod(line);
    // Removing a method leaves the empty lines around it, so drop all but one of them.
    const bool isSpare = line.empty() && (script.statements.empty() || script.statements.back().empty());
    if (isInMethod)
      script.methods.back().push_back(line);
    else if (!isSpare)
      script.statements.push_back(line);
    if (EndsMethod(line)) isInMethod = false;
  }
  if (isInMethod) throw std::runtime_error(path + ": the last method has no End Sub or End Function");
  if (!script.isForDesktop)
    script.expected = SplitIntoLines(host::ReadFile(std::filesystem::path(path).replace_extension(".txt")));
  return script;
}

}  // namespace projects
