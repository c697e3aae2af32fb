#include "members.h"

#include <regex>

namespace projects {

std::string Indented(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += "\t\t" + (line.empty() ? "  " : line) + "\n";
  return text;
}

Lines Deeper(const Lines& lines) {
  Lines deeper;
  for (const std::string& line : lines) deeper.push_back(line.empty() ? "" : "  " + line);
  return deeper;
}

std::string Methods(const std::vector<Lines>& methods, const Scope& scope) {
  std::string text;
  for (Lines lines : methods) {
    lines.front().insert(0, scope.word);
    text += text.empty() ? "" : "\n";
    text += std::string("\t#tag Method, Flags = ") + scope.flags + "\n" + Indented(lines) + "\t#tag EndMethod\n";
  }
  return text;
}

std::string Module(const std::string& name, const std::vector<Lines>& methods) {
  return "#tag Module\nProtected Module " + name + "\n" + Methods(methods, kProtected) +
         "\n\nEnd Module\n#tag EndModule\n";
}

Lines WithWord(Lines lines, const std::string& word, const std::string& replacement) {
  const std::regex pattern("(\"[^\"]*\"|'.*)|\\b" + word + "\\b", std::regex::icase);
  for (std::string& line : lines) {
    std::string replaced;
    std::smatch match;
    while (std::regex_search(line, match, pattern)) {
      replaced += match.prefix().str() + (match[1].matched ? match.str() : replacement);
      line = match.suffix();
    }
    line.insert(0, replaced);
  }
  return lines;
}

}  // namespace projects
