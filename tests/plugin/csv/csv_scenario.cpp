// Calls SplitCommaSeparatedValuesZKT as a host does.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

#include "core/arrays.h"
#include "core/strings.h"
#include "services/members.h"
#include "support/fresh_plugin.h"

namespace {

using Fields = std::vector<std::string>;

class SplitCSV : public testing::Test {
 protected:
  ~SplitCSV() override {
    const host::ReferenceReport references = host::ReportReferences();
    EXPECT_TRUE(references.IsBalanced()) << host::DescribeReferences(references);
    host_ = {};
  }

  void Load() {
    tests::LoadFreshPlugin();
    function_ = reinterpret_cast<Function>(host::FindNativeFunction(host_, "SplitCommaSeparatedValuesZKT"));
    ASSERT_NE(function_, nullptr);
  }

  Fields Split(std::string_view text, std::string_view delimiter = "", std::string_view quote = "",
               std::uint32_t encoding = zkt::kEncodingUTF8) {
    if (function_ == nullptr) Load();
    const auto argument = [](std::string_view bytes, std::uint32_t in) {
      return bytes.empty() ? host::StringRef() : host::StringRef(host::MakeString(bytes, in));
    };
    const host::ArrayRef array(function_(argument(text, encoding).Get(), argument(delimiter, zkt::kEncodingUTF8).Get(),
                                         argument(quote, zkt::kEncodingUTF8).Get()));
    if (!array) return {"no array"};
    Fields fields;
    for (std::int64_t i = 0; i <= host::UpperBound(array.Get()); ++i) {
      const auto* const field = host::ElementAt<REALstringStruct*>(array.Get(), i);
      EXPECT_EQ(field == nullptr, field == nullptr || field->length == 0) << "an empty field is nil";
      EXPECT_EQ(field != nullptr ? field->referenceCount : 1, 1) << "the array holds the only reference";
      fields.push_back(host::ToUTF8(field));
    }
    return fields;
  }

  Fields SplitExample(const char* name) {
    std::ifstream file(std::string(ZKT_EXAMPLES "/data/") + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return Split(std::string(std::istreambuf_iterator<char>(file), {}));
  }

  host::Host& host_ = host::Host::Current();

 private:
  using Function = host::Array* (*)(REALstringStruct*, REALstringStruct*, REALstringStruct*);
  Function function_ = nullptr;
};

TEST_F(SplitCSV, TakesTheDialectFromItsParameters) {
  EXPECT_EQ(Split(""), Fields({""}));
  EXPECT_EQ(Split("a,b;c,d"), Fields({"a", "b;c", "d"})) << "the delimiter is detected";
  EXPECT_EQ(Split("a,b;c,d", ";"), Fields({"a,b", "c,d"}));
  EXPECT_EQ(Split("a,b;c,d", ";,"), Fields({"a,b", "c,d"})) << "only the first byte is used";
  EXPECT_EQ(Split("'a,b',c", ",", "'"), Fields({"a,b", "c"}));
  EXPECT_EQ(Split("a\xC3\xA9", "é"), Fields({"a", "\xA9"})) << "the lead byte is the delimiter";
  EXPECT_EQ(Split(std::string_view("a\0b", 3), std::string_view("\0", 1)), Fields({"a", "b"}));
}

TEST_F(SplitCSV, ReadsTextInAnyEncoding) {
  EXPECT_EQ(Split("\xE9;\xFC", ";", "", zkt::kEncodingISOLatin1), Fields({"é", "ü"}));
  EXPECT_EQ(Split(std::string_view("\xE9\0;\0x\0", 6), ";", "", zkt::kEncodingUTF16), Fields({"é", "x"}));
  EXPECT_EQ(Split("\x80;b", ";", "", zkt::kEncodingNone), Fields({"Ä", "b"}));
}

TEST_F(SplitCSV, ReadsTheExamples) {
  const Fields customers = SplitExample("kunden.csv");
  ASSERT_EQ(customers.size(), 31u) << "five records of six fields, and the empty field after the last line break";
  EXPECT_EQ(customers[0], "Kunde") << "without the byte-order mark";
  EXPECT_EQ(customers[12], "Café \"Zur Post\"");
  EXPECT_EQ(customers[17], "Lieferung nur vormittags;\r\nbitte klingeln");
  const Fields books = SplitExample("books.csv");
  ASSERT_EQ(books.size(), 36u);
  EXPECT_EQ(books[5], "The Left Hand, and the Right");
  EXPECT_EQ(books[10], "He said \"Never\" twice");
  EXPECT_EQ(books[34], "Line one\nLine two\nLine three");
  const Fields weather = SplitExample("weather.tsv");
  ASSERT_EQ(weather.size(), 26u);
  EXPECT_EQ(weather[14], "gusts, up to 12");
}

TEST_F(SplitCSV, WorksOnEveryHostVersion) {
  for (const double version : {0.0, 2011.04, 2012.0, 2013.0, 2024.03, 3000.0}) {
    host_.version = version;
    Load();
    EXPECT_EQ(Split("é,\"x\ny\",z"), Fields({"é", "x\ny", "z"})) << version;
  }
}

TEST_F(SplitCSV, ToleratesAbsentServices) {
  const struct {
    const char* service;
    Fields want;  // the fields of "a,b"
  } cases[] = {
      {"RuntimeArrayCreateSingleDimBoundedArray", {"no array"}},
      {"PluginStringArrayInsertProc", {}},
      {"RuntimeUBound", {}},  // every field would be inserted at index 1, which the host rejects in an empty array
      {"REALBuildStringWithEncoding", {"", ""}},
      {"REALLoadGlobalMethod", {""}},
      {"LenB( s as string ) as integer", {""}},
      {"StringGetCString", {"a", "b"}},
      {"REALGetStringEncoding", {"a", "b"}},
  };
  for (const auto& c : cases) {
    host_.withheld = {c.service};
    Load();
    EXPECT_EQ(Split("a,b", ","), c.want) << c.service;
  }
}

TEST_F(SplitCSV, LooksUpAvailableServicesOnceAndMissingOnesAgain) {
  host_.withheld = {"RuntimeUBound"};
  Split("a,b,c,d");
  EXPECT_EQ(host_.lookupCounts["RuntimeUBound"], 4);
  EXPECT_EQ(host_.lookupCounts["REALBuildStringWithEncoding"], 1);
  EXPECT_EQ(host_.lookupCounts["PluginStringArrayInsertProc"], 1);
  Split("a,b,c,d");
  EXPECT_EQ(host_.lookupCounts["RuntimeUBound"], 8);
  EXPECT_EQ(host_.lookupCounts["REALBuildStringWithEncoding"], 1);
}

}  // namespace
