// The method on the development host, against the naive splitter, and how its log shows bytes beyond ASCII.
#include "csv/split_csv.h"

#include "plugin/csv/random_csv.h"
#include "support/host_fixture.h"
#include "support/naive_csv.h"

namespace {

using tests::MakeString;

class SplitCSVMethod : public tests::HostTest {
 protected:
  // Empty delimiters and quotes are nil.
  static host::ArrayRef Split(std::string_view text, std::string_view delimiter, std::string_view quote) {
    const auto optional = [](std::string_view bytes) { return bytes.empty() ? host::StringRef() : MakeString(bytes); };
    return host::ArrayRef(reinterpret_cast<host::Array*>(
        zkt::SplitCSV(MakeString(text).Get(), optional(delimiter).Get(), optional(quote).Get())));
  }
};

TEST_F(SplitCSVMethod, AgreesWithTheNaiveSplitter) {
  for (unsigned seed = 0; seed < 100'000; ++seed) {
    tests::RandomCsv random(seed);
    const std::string text = random.Text(200);
    const auto oneOrNone = [&] { return random.Below(2) == 0 ? std::string() : std::string(1, random.Special()); };
    const std::string delimiter = oneOrNone();
    const std::string quote = oneOrNone();
    const char delimiterByte = delimiter.empty() ? naive::DetectDelimiter(text) : delimiter[0];
    ASSERT_EQ(tests::ElementsOf(Split(text, delimiter, quote)),
              naive::Split(text, delimiterByte, quote.empty() ? '"' : quote[0]))
        << "seed " << seed << ", text " << testing::PrintToString(text);
    const host::ReferenceReport references = host::ReportReferences();
    ASSERT_TRUE(references.IsBalanced()) << "seed " << seed << ", " << host::DescribeReferences(references);
  }
}

TEST_F(SplitCSVMethod, LogsBytesAsNumbersFrom0To255) {
  const struct {
    const char* text;
    const char* delimiter;
    const char* quote;
    const char* line;
  } cases[] = {
      {"", "é", "", "delimiter 195"},
      {"", "é", "", "delimiter \xC3"},
      {"", "", "ÿ", "quote 195"},
      {"", "", "ÿ", "quote \xC3"},
      {"a\tb", "", "", "use tab"},
      {"a;b", "", "", "use semicolon"},
      {"\xFF\"\x80", ",", "", "lonly quote in value 255, 128"},
  };
  for (const auto& c : cases) {
    const tests::Debugging debugging;
    tests::CapturedLog log;
    Split(c.text, c.delimiter, c.quote);
    const std::string lines = log.Take();
    EXPECT_NE(lines.find(std::string("ZKT Debug: ") + c.line + "\n"), std::string::npos) << c.line << " in\n" << lines;
  }
}

TEST_F(SplitCSVMethod, LogsThatItWasCalledWhereTheHostMakesNoArray) {
  const tests::Without withheld(zkt::REALCreateArray);
  const tests::Debugging debugging;
  tests::CapturedLog log;
  EXPECT_FALSE(Split("a,b", "", ""));
  EXPECT_EQ(log.Take(), "ZKT Debug: SplitCSV\n");
}

}  // namespace
