// Hand-worked tables, each row run against the splitter and the naive oracle, then random texts on both.

#include "csv/splitter.h"

#include <gtest/gtest.h>

#include "csv/delimiter_detection.h"
#include "plugin/csv/random_csv.h"
#include "support/naive_csv.h"

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

struct Case {
  const char* note;
  std::string text;
  char delimiter;
  char quote;
  Fields want;
};

// A leading byte-order mark never changes the fields; with it, every row also runs at another alignment.
void ExpectFields(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(Split(c.text, c.delimiter, c.quote), c.want) << c.note;
    EXPECT_EQ(naive::Split(c.text, c.delimiter, c.quote), c.want) << "naive: " << c.note;
    if (c.text.starts_with(kBom)) continue;
    EXPECT_EQ(Split(kBom + c.text, c.delimiter, c.quote), c.want) << "behind a byte-order mark: " << c.note;
    EXPECT_EQ(naive::Split(kBom + c.text, c.delimiter, c.quote), c.want) << "naive, byte-order mark: " << c.note;
  }
}

TEST(CsvSplitter, SplitsUnquotedText) {
  ExpectFields({
      {"empty text", "", ',', '"', {""}},
      {"two fields", "a,b", ',', '"', {"a", "b"}},
      {"trailing delimiter", "a,b,", ',', '"', {"a", "b", ""}},
      {"delimiters alone", ",,", ',', '"', {"", "", ""}},
      {"trailing LF", "a,b\n", ',', '"', {"a", "b", ""}},
      {"trailing CR", "a\r", ',', '"', {"a", ""}},
      {"trailing CR LF", "a\r\n", ',', '"', {"a", ""}},
      {"empty line", "a\n\nb", ',', '"', {"a", "", "b"}},
      {"CR LF is one break", "a\r\nb", ',', '"', {"a", "b"}},
      {"LF CR is two", "a\n\rb", ',', '"', {"a", "", "b"}},
      {"CR CR LF is two", "a\r\r\nb", ',', '"', {"a", "", "b"}},
      {"delimiter before a break", "a,\nb", ',', '"', {"a", "", "b"}},
      {"other separators are content", "a,b;c\td", '\t', '"', {"a,b;c", "d"}},
      {"NUL is content", "a\0b,\0"s, ',', '"', {"a\0b"s, "\0"s}},
      {"specials with the high bit set are content", "a\xAC\xA2\x8A\x8D,b", ',', '"', {"a\xAC\xA2\x8A\x8D", "b"}},
  });
}

TEST(CsvSplitter, ReadsQuotedFields) {
  ExpectFields({
      {"two in a row", R"("x","y")", ',', '"', {"x", "y"}},
      {"empty, then unquoted", R"("",b)", ',', '"', {"", "b"}},
      {"empty alone", R"("")", ',', '"', {""}},
      {"delimiter and breaks are content", "\"a,b\r\nc\n\rd\",e", ',', '"', {"a,b\r\nc\n\rd", "e"}},
      {"doubled quote is one", R"("a""b",c)", ',', '"', {R"(a"b)", "c"}},
      {"only a doubled quote", R"("""")", ',', '"', {R"(")"}},
      {"doubled quote, then the delimiter", R"("a"",b)", ',', '"', {R"(a",b)"}},
      {"delimiter behind, then nothing", R"("x",)", ',', '"', {"x", ""}},
      {"LF behind, then nothing", "\"x\"\n", ',', '"', {"x", ""}},
      {"only the first delimiter behind is swallowed", R"(,"x",,)", ',', '"', {"", "x", "", ""}},
      {"CR LF behind", "\"x\"\r\n\"y\"", ',', '"', {"x", "y"}},
      {"CR behind", "\"x\"\r\"y\"", ',', '"', {"x", "y"}},
      {"LF CR behind", "\"x\"\n\ry", ',', '"', {"x", "", "y"}},
      {"at the start of lines", "a\n\"b,\"\r\"c,\"\r\n\"d,\"", ',', '"', {"a", "b,", "c,", "d,"}},
      {"quote before a letter runs on", R"("a"b,c",d)", ',', '"', {R"(a"b,c)", "d"}},
      {"quote before a blank runs on", R"("a" ,b)", ',', '"', {R"(a" ,b)"}},
      {"running on, then a doubled quote", R"("a"b""c",d)", ',', '"', {R"(a"b"c)", "d"}},
      {"unterminated", "a,\"b,c\nd", ',', '"', {"a", "b,c\nd"}},
      {"unterminated, ending in a doubled quote", R"("x"")", ',', '"', {R"(x")"}},
      {"a single quote byte", R"(")", ',', '"', {""}},
      {"three quote bytes", R"(""")", ',', '"', {R"(")"}},
      {"NUL is content", "\"a\0,\",b"s, ',', '"', {"a\0,"s, "b"}},
      {"NUL ends it and is a field of its own", "\"x\"\0,y"s, ',', '"', {"x", "\0"s, "y"}},
      {"NUL behind at the end", "\"x\"\0"s, ',', '"', {"x", "\0"s}},
      {"NUL behind, then a quote opens in the same field", "\"x\"\0\"y,\",z"s, ',', '"', {"x", "\0y,"s, "z"}},
  });
}

TEST(CsvSplitter, ReadsQuotesInsideValues) {
  ExpectFields({
      {"lone quote takes the rest", R"(a"b,c)", ',', '"', {R"(a"b,c)"}},
      {"lone quote before LF takes the rest", "a\"\nb,c", ',', '"', {"a\"\nb,c"}},
      {"lone pair keeps delimiters and breaks", "a\"b,\r\nc\"d,e", ',', '"', {"a\"b,\r\nc\"d", "e"}},
      {"doubled quote is kept", R"(a"",b)", ',', '"', {R"(a"")", "b"}},
      {"doubled quote at the end", R"(a"")", ',', '"', {R"(a"")"}},
      {"behind a blank", R"(a, "b,c")", ',', '"', {"a", R"( "b,c")"}},
      {"one lone pair per field", R"(a"b",c"d,e)", ',', '"', {R"(a"b")", R"(c"d,e)"}},
      {"lone quote behind a lone pair", R"(a"b""c,d)", ',', '"', {R"(a"b""c,d)"}},
      {"opening quote behind a lone pair", R"(a"b"",c)", ',', '"', {R"(a"b",c)"}},
      {"before the delimiter it opens", R"(ab",cd)", ',', '"', {"ab,cd"}},
      {"before the delimiter it opens, and ends", R"(ab",cd",e)", ',', '"', {"ab,cd", "e"}},
      {"at the end it opens", R"(ab")", ',', '"', {"ab"}},
      {"before NUL it opens", "a\"\0b,c\",d"s, ',', '"', {"a\0b,c"s, "d"}},
      {"behind NUL it opens", "a\0\"b,c\",d"s, ',', '"', {"a\0b,c"s, "d"}},
  });
}

TEST(CsvSplitter, SkipsOneByteOrderMark) {
  ExpectFields({
      {"alone", kBom, ',', '"', {""}},
      {"before a quote", kBom + R"("a,b",c)", ',', '"', {"a,b", "c"}},
      {"the second is content", kBom + kBom + "a,b", ',', '"', {kBom + "a", "b"}},
      {"later it is content", "a," + kBom + "b", ',', '"', {"a", kBom + "b"}},
      {"a part of it is content", "\xEF\xBB,a", ',', '"', {"\xEF\xBB", "a"}},
      {"a quote behind a part of it is lone", "\xEF\xBB\"a,b", ',', '"', {"\xEF\xBB\"a,b"}},
      {"its lead byte as delimiter", kBom + "x" + kBom + "y", '\xEF', '"', {"x", "\xBB\xBFy"}},
      {"its lead byte as quote", kBom + "\xEFx,y\xEF,z", ',', '\xEF', {"x,y", "z"}},
  });
}

TEST(CsvSplitter, TakesAnyDelimiterAndQuote) {
  ExpectFields({
      {"other quote", R"('a''b,',"c,d")", ',', '\'', {"a'b,", R"("c)", R"(d")"}},
      {"lone other quote does not end the run", "a'b'c,d", ',', '\'', {"a'b'c,d"}},
      {"a double quote ends the run", R"(a'b,'c"d,e)", ',', '\'', {R"(a'b,'c"d)", "e"}},
      {"a double quote ends the run at once", R"(a'"b,c)", ',', '\'', {R"(a'"b)", "c"}},
      {"other quote opens at the end of a value", "ab',cd',e", ',', '\'', {"ab,cd", "e"}},
      {"other quote opens behind the other delimiter", "a|'b|c'|d", '|', '\'', {"a", "b|c", "d"}},
      {"lead bytes of longer characters", "a\xC3\xA9\xE2,\xC3\xE2", '\xC3', '\xE2', {"a", "\xA9\xE2,\xC3\xE2"}},
      {"equal: the delimiter wins", R"("a")", '"', '"', {"", "a", ""}},
      {"double quote as delimiter ends a run too", R"(a"b'c"d"e)", '"', '\'', {"a", R"(b'c"d)", "e"}},
      {"CR as delimiter parts CR LF", "a\r\nb", '\r', '"', {"a", "", "b"}},
      {"LF as delimiter leaves CR LF whole", "a\r\nb\nc", '\n', '"', {"a", "b", "c"}},
      {"CR as quote: lone before LF", "a\r\nb,c", ',', '\r', {"a\r\nb,c"}},
      {"CR as quote: opens behind LF", "\n\ra,\r\nb", ',', '\r', {"", "a,", "b"}},
      {"LF as quote: CR LF stays a break", "a\r\n\nb,\n", ',', '\n', {"a", "b,"}},
      {"LF as quote: doubled", "\na\n\nb\n", ',', '\n', {"a\nb"}},
      {"LF as quote: opens behind a lone run", "a\nb\"\nc,d", ',', '\n', {"a\nb\"c,d"}},
      {"NUL as delimiter", "a\0\"b\0\"\0c\""s, '\0', '"', {"a", "b\0"s, "c"}},
      {"NUL as delimiter behind a quoted field", "\"x\"\0"s, '\0', '"', {"x", ""}},
      {"NUL as delimiter: the quote before it opens", "ab\"\0cd"s, '\0', '"', {"ab\0cd"s}},
      {"NUL as quote", "\0a,\0,b"s, ',', '\0', {"a,", "b"}},
      {"NUL as quote: opens at the end of the text", "a\0"s, ',', '\0', {"a"}},
      {"NUL as quote: the last one is doubled by the end", "\0a\0"s, ',', '\0', {"a\0"s}},
      {"NUL as quote: nothing but two", "\0\0"s, ',', '\0', {"\0"s}},
      {"NUL as quote: opens behind a lone run", "a\0b\"\0c,d"s, ',', '\0', {"a\0b\"c,d"s}},
      {"NUL as both", "a\0b"s, '\0', '\0', {"a", "b"}},
  });
}

TEST(CsvSplitter, FindsSpecialBytesAtEveryBlockEdge) {
  const auto a = [](std::size_t count, std::string head = "") { return head.append(count, 'a'); };
  for (const std::size_t at : {0u, 1u, 2u, 15u, 16u, 31u, 32u, 62u, 63u, 64u, 65u, 127u, 128u, 199u, 200u, 201u}) {
    SCOPED_TRACE(testing::Message() << "special byte at " << at);
    ExpectFields({
        {"last byte is content", a(at), ',', '"', {a(at)}},
        {"delimiter", a(at) + "," + a(200), ',', '"', {a(at), a(200)}},
        {"delimiter at the end", a(at) + ",", ',', '"', {a(at), ""}},
        {"LF", a(at) + "\n" + a(200), ',', '"', {a(at), a(200)}},
        {"CR LF", a(at) + "\r\n" + a(200), ',', '"', {a(at), a(200)}},
        {"LF CR", a(at) + "\n\r" + a(200), ',', '"', {a(at), "", a(200)}},
        {"CR at the end", a(at) + "\r", ',', '"', {a(at), ""}},
        {"quote before the delimiter", a(at) + "\"," + a(200), ',', '"', {a(at) + "," + a(200)}},
        {"quote at the end", a(at) + "\"", ',', '"', {a(at)}},
        {"quote behind NUL", a(at) + "\0\"b,c\",d"s, ',', '"', {a(at) + "\0b,c"s, "d"}},
    });
    if (at < 2) continue;
    ExpectFields({
        {"lone quote", a(at) + "\"b," + a(200), ',', '"', {a(at) + "\"b," + a(200)}},
        {"end of a lone run", a(at - 2, "b\"") + "\"," + a(200), ',', '"', {a(at - 2, "b\"") + "\"", a(200)}},
        {"opening quote", a(at - 1) + ",\"b,c\",d", ',', '"', {a(at - 1), "b,c", "d"}},
        {"closing quote", a(at - 1, "\"") + "\"," + a(200), ',', '"', {a(at - 1), a(200)}},
        {"closing quote at the end", a(at - 1, "\"") + "\"", ',', '"', {a(at - 1)}},
        {"doubled quote", a(at - 1, "\"") + "\"\",\",d", ',', '"', {a(at - 1) + "\",", "d"}},
        {"quote that runs on", a(at - 1, "\"") + "\"b,c\",d", ',', '"', {a(at - 1) + "\"b,c", "d"}},
        {"quoted delimiter and CR LF", a(at - 1, "\"") + ",\r\n\",d", ',', '"', {a(at - 1) + ",\r\n", "d"}},
    });
  }
}

TEST(CsvDetection, PicksTheCommonestOutsideDoubleQuotes) {
  const auto many = [](std::size_t count, char byte, std::string head = "") { return head.append(count, byte); };
  const struct {
    const char* note;
    std::string text;
    char want;
  } cases[] = {
      {"empty text", "", ';'},
      {"no candidate", "abc|d e", ';'},
      {"comma", "a,b", ','},
      {"semicolon", "a;b", ';'},
      {"tab", "a\tb", '\t'},
      {"two semicolons, one comma", "a;b,c;d", ';'},
      {"comma and semicolon tie", "a,b;c", ';'},
      {"tab and comma tie", "a\tb,c", ','},
      {"tab and semicolon tie", "a\tb;c", ';'},
      {"all tie", "\t,;", ';'},
      {"tab beats each, not their sum", "\t\t\t,,;;", '\t'},
      {"tab ties with the larger", ",,\t\t;", ','},
      {"tab beats the comma alone", "\t\t,;;;", ';'},
      {"all lines count", "a,b\nc;d\r\ne;f", ';'},
      {"quoted commas do not count", "\",,,\";a\t\t", '\t'},
      {"quoted semicolons do not count", R"(";;;",a)", ','},
      {"quoted tabs do not count", "\"\t\t\",a", ','},
      {"a doubled quote flips twice", R"("x"";;"";y",z)", ','},
      {"a quote inside a value flips", R"(a"b;;"c,d)", ','},
      {"an open quote hides the rest", R"(a,b";;;)", ','},
      {"the other quote hides nothing", "'a;b;c',d", ';'},
      {"NUL ends nothing", "a\0b,c"s, ','},
      {"behind a byte-order mark", kBom + "a,b", ','},
      {"candidates with the high bit set", "\xBB\xBB\x89\x89\x89,", ','},
      {"quote with the high bit set", "\xA2,,\xA2\t", ','},
      {"quoted over many blocks", many(1000, ';', "\"") + "\",", ','},
      {"256 against one", many(256, ',') + ";", ','},
      {"blocks of commas beyond a byte's count", many(64 * 256, ',') + ";", ','},
      {"65536 tabs against 65535 commas", many(65536, '\t') + many(65535, ','), '\t'},
      {"100000 semicolons against 100001 commas", many(100000, ';') + many(100001, ','), ','},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Detect(c.text), c.want) << c.note;
    EXPECT_EQ(naive::DetectDelimiter(c.text), c.want) << "naive: " << c.note;
  }
}

constexpr unsigned kRandomTexts = 100'000;

TEST(CsvSplitter, AgreesWithTheNaiveSplitter) {
  for (unsigned seed = 0; seed < kRandomTexts; ++seed) {
    tests::RandomCsv random(seed);
    const std::string text = random.Text(200);
    const bool odd = random.Below(2) == 0;
    const char delimiter = odd ? random.Special() : ',';
    const char quote = odd ? random.Special() : '"';
    ASSERT_EQ(Split(text, delimiter, quote), naive::Split(text, delimiter, quote))
        << "seed " << seed << ", delimiter " << int{delimiter} << ", quote " << int{quote} << ", text "
        << testing::PrintToString(text);
  }
}

TEST(CsvDetection, AgreesWithTheNaiveDetection) {
  for (unsigned seed = 0; seed < kRandomTexts; ++seed) {
    const std::string text = tests::RandomCsv(seed).Text(400);
    ASSERT_EQ(Detect(text), naive::DetectDelimiter(text))
        << "seed " << seed << ", text " << testing::PrintToString(text);
  }
}

}  // namespace
