// Compares the splitter and the naive oracle with handwritten tables, and with each other on random input.

#include "csv/splitter.h"

#include <gtest/gtest.h>

#include "csv/delimiter_detection.h"
#include "plugin/csv/random_csv.h"
#include "support/naive_csv.h"
#include "support/table.h"

namespace {

namespace csv = zkt::csv;
using namespace std::string_literals;
using Fields = std::vector<std::string>;

const std::string kBom = "\xEF\xBB\xBF";

Fields Split(std::string_view text, char delimiter, char quote) {
  Fields fields;
  const auto keep = [&](std::string_view field) { fields.emplace_back(field); };
  csv::SplitText(csv::PaddedText(text), csv::Dialect{delimiter, quote}, keep, csv::NoObserver{});
  return fields;
}

char Detect(std::string_view text) { return csv::DetectDelimiter(csv::PaddedText(text)); }

std::string Shown(const Fields& fields) {
  std::string shown;
  for (const std::string& field : fields) shown += "<" + field + ">";
  return shown;
}

TEST(CsvSplitter, SplitsTheTable) {
  for (const tests::Row& row : tests::ReadTable("plugin/csv/fields.tsv", 5)) {
    const char delimiter = row[1][0];
    const char quote = row[2][0];
    // A leading byte-order mark never changes the fields. With it, every row is also tested at a different alignment.
    for (const std::string& text : {row[3], kBom + row[3]}) {
      if (text.starts_with(kBom + kBom)) continue;
      EXPECT_EQ(Shown(Split(text, delimiter, quote)), row[4]) << row[0];
      EXPECT_EQ(Shown(naive::Split(text, delimiter, quote)), row[4]) << "naive: " << row[0];
    }
  }
}

// Puts different numbers of letters between head and tail, so that special bytes occur on both sides of every block
// boundary.
TEST(CsvSplitter, FindsSpecialBytesAtEveryBlockEdge) {
  const std::string more(200, 'a');
  const std::string tails[] = {
      "",           ",",           "," + more,  "\n" + more,    "\r\n" + more, "\n\r" + more,     "\r",        "\"",
      "\"," + more, "\"\"" + more, "\"b,c\",d", "\0\"b,c\",d"s, "\"\",\",d",   ",\r\n\"," + more, ",\"b,c\",d"};
  for (const std::size_t at : {0u, 1u, 2u, 15u, 16u, 31u, 32u, 62u, 63u, 64u, 65u, 127u, 128u, 199u, 200u, 201u})
    for (const std::string head : {"", "\"", "b\""})
      for (const std::string& tail : tails) {
        const std::string text = head + std::string(at - std::min(at, head.size()), 'a') + tail;
        EXPECT_EQ(Split(text, ',', '"'), naive::Split(text, ',', '"')) << at << ": " << text;
      }
}

TEST(CsvDetection, PicksTheMostFrequentOutsideDoubleQuotes) {
  auto rows = tests::ReadTable("plugin/csv/delimiters.tsv", 3);
  const auto many = [](std::size_t count, char byte, std::string head = "") { return head.append(count, byte); };
  rows.insert(rows.end(), {{"quoted over many blocks", many(1000, ';', "\"") + "\",", ","},
                           {"256 commas against one semicolon", many(256, ',') + ";", ","},
                           {"more commas than a byte can count", many(64 * 256, ',') + ";", ","},
                           {"65536 tabs against 65535 commas", many(65536, '\t') + many(65535, ','), "\t"},
                           {"100000 semicolons against 100001 commas", many(100000, ';') + many(100001, ','), ","}});
  for (const tests::Row& row : rows) {
    EXPECT_EQ(Detect(row[1]), row[2][0]) << row[0];
    EXPECT_EQ(naive::DetectDelimiter(row[1]), row[2][0]) << "naive: " << row[0];
  }
}

TEST(CsvDetection, AgreesWithTheNaiveDetection) {
  for (unsigned seed = 0; seed < 100'000; ++seed) {
    const std::string text = tests::RandomCsv(seed).Text(400);
    ASSERT_EQ(Detect(text), naive::DetectDelimiter(text))
        << "seed " << seed << ", text " << testing::PrintToString(text);
  }
}

}  // namespace
