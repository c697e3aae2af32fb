// Compares the split method on the development host with the naive splitter, and checks the method's traces.
#include "csv/split_csv.h"

#include "plugin/csv/random_csv.h"
#include "support/host_fixture.h"
#include "support/naive_csv.h"

namespace {

using tests::MakeString;

class SplitCSVMethod : public tests::HostTest {
 protected:
  // Passes empty delimiters and quotes as nil.
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
    tests::ExpectBalance();
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
  }
}

TEST_F(SplitCSVMethod, TracesBytesAsNumbersFrom0To255) {
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
    const std::string trace = tests::TraceOf([&] { Split(c.text, c.delimiter, c.quote); });
    EXPECT_NE(trace.find(std::string("|") + c.line + "|"), std::string::npos) << c.line << " in\n" << trace;
  }
}

TEST_F(SplitCSVMethod, TracesEveryStep) {
  EXPECT_EQ(tests::WithoutAddresses(tests::TraceOf([] { Split("\xEF\xBB\xBF\"x\"\"y\",b\"c,\"\n", "", ""); })),
            "SplitCSV|DetectDelimiter|use comma|delimiter 44|delimiter ,|quote 34|quote \"|ignored UTF-8 BOM|"
            "text length 16|t @|e @|start quote found \"x\"\"y\",b\"c,\"|!|found two quotes \"\"y\",b\"c,\"|!|"
            "end quote found \",b\"c,\"|!|add @: x\"y|delimiter found ,b\"c,\"|!|lonly quote in value 98, 99|"
            "newline found |!|add @: b\"c,\"|add (nil): |done|");
}

TEST_F(SplitCSVMethod, TracesTheCallWhenTheHostCreatesNoArray) {
  const tests::ServiceWithheld withheld(zkt::REALCreateArray);
  EXPECT_EQ(tests::TraceOf([] { EXPECT_FALSE(Split("a,b", "", "")); }), "SplitCSV|");
}

}  // namespace
