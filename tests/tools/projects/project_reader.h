// Reads Xojo projects in the text format. Anything that the format does not allow fails the current test.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/files.h"

namespace reader {

using Lines = std::vector<std::string>;

inline Lines ReadLines(const std::string& path) {
  const std::string text = host::ReadFile(path);
  EXPECT_TRUE(text.ends_with('\n') && !text.starts_with("\xEF\xBB\xBF") && text.find('\r') == std::string::npos)
      << path;
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

struct Item {
  std::string kind, name, path, id, parent, isEncrypted;
};

struct Project {
  std::vector<Item> items;
  std::map<std::string, std::string> settings;
};

inline Project ReadProject(const std::string& path) {
  Project project;
  for (const std::string& line : ReadLines(path)) {
    Item item;
    std::istringstream parts(line);
    std::getline(parts, item.kind, '=');
    EXPECT_LT(item.kind.size(), line.size()) << path << ": " << line;
    for (std::string* part : {&item.name, &item.path, &item.id, &item.parent, &item.isEncrypted})
      std::getline(parts, *part, ';');
    if (!item.isEncrypted.empty())
      project.items.push_back(item);
    else
      EXPECT_TRUE(project.settings.emplace(item.kind, line.substr(item.kind.size() + 1)).second)
          << path << ": " << line;
  }
  return project;
}

// A method or event: its declaration, and the lines of its body without their common indentation.
struct Member {
  std::string tag, declaration;
  Lines body;
};

inline std::string WithoutIndentation(const std::string& line, const std::string& indentation,
                                      const std::string& path) {
  EXPECT_TRUE(line.starts_with(indentation)) << path << ": " << line;
  return line.substr(std::min(line.size(), indentation.size()));
}

// Returns the methods and events of an item. Checks that tags and Begin/End blocks are properly nested.
inline std::vector<Member> ReadMembers(const std::string& path) {
  std::vector<Member> members;
  Lines open;
  for (const std::string& line : ReadLines(path)) {
    std::istringstream words(line);
    std::string first, second;
    words >> first >> second;
    if (first == "#tag") second = second.substr(0, second.find(','));
    const bool isInMember = !open.empty() && (open.back() == "Method" || open.back() == "Event");
    if (first == "#tag" && !second.starts_with("End")) {
      open.push_back(second);
      if (second == "Method" || second == "Event") members.push_back({line.substr(1), "", {}});
    } else if (first == "#tag") {
      EXPECT_TRUE(!open.empty() && second == "End" + open.back()) << path << ": " << line;
      if (!open.empty()) open.pop_back();
    } else if (isInMember && members.back().declaration.empty()) {
      members.back().declaration = WithoutIndentation(line, "\t\t", path);
    } else if (isInMember && line.starts_with("\t\tEnd ")) {
      const std::string& declaration = members.back().declaration;
      EXPECT_NE((" " + declaration).find(" " + second + " "), std::string::npos) << path << ": " << declaration;
    } else if (isInMember) {
      members.back().body.push_back(WithoutIndentation(line, "\t\t  ", path));
    } else if (first == "Begin") {
      open.push_back("block");
    } else if (first == "End" && second.empty()) {
      EXPECT_TRUE(!open.empty() && open.back() == "block") << path << ": " << line;
      if (!open.empty()) open.pop_back();
    }
  }
  EXPECT_TRUE(open.empty()) << path;
  return members;
}

}  // namespace reader
