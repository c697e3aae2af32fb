// Reads tables of test cases from files in tests/. Columns are separated by tabs. Unprintable bytes are written as \n,
// \r, \t, \0, \\, or \xHH. Empty lines and lines that begin with "# " are skipped.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace tests {

using Row = std::vector<std::string>;

inline Row SplitRow(const std::string& line) {
  Row row(1);
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\t') {
      row.emplace_back();
    } else if (line[i] != '\\') {
      row.back() += line[i];
    } else if (line[++i] == 'x') {
      row.back() += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      constexpr std::string_view kLetters("nrt0\\"), kBytes("\n\r\t\0\\", 5);
      row.back() += kBytes.at(kLetters.find(line.at(i)));
    }
  }
  return row;
}

inline std::vector<Row> ReadTable(const std::string& path, std::size_t columns) {
  std::vector<Row> rows;
  std::ifstream file(ZKT_TESTS "/" + path);
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.starts_with("# ")) continue;
    rows.push_back(SplitRow(line));
    EXPECT_EQ(rows.back().size(), columns) << path << ": " << line;
    rows.back().resize(columns);
  }
  EXPECT_FALSE(rows.empty()) << path << " has no rows";
  return rows;
}

}  // namespace tests
