// The development host's own language: what scripts cannot show, because it ends them.
#include "core/strings.h"
#include "host/script_test.h"
#include "support/fresh_plugin.h"

namespace {

class Language : public tests::ScriptTest {
 protected:
  static void SetUpTestSuite() { tests::LoadFreshPlugin(); }
};

TEST_F(Language, RunsTheTable) { ExpectTable("host/language.tsv"); }

TEST_F(Language, ShowsExceptionsAndLetsATestCatchThem) {
  EXPECT_EQ(Run("FailZKT(\"broken\", 3)\nPrint 1"), "FailureExceptionZKT: broken (error 3)\n1\n");
  const host::Catalogue catalogue(host::Host::Current());
  std::ostringstream out;
  host::Interpreter interpreter(catalogue, out);
  try {
    interpreter.RunLine("FailZKT(\"broken\", 3)");
    FAIL() << "nothing was thrown";
  } catch (const host::XojoException& exception) {
    EXPECT_EQ(exception.Raised().className, "FailureExceptionZKT");
    EXPECT_EQ(exception.Raised().message, "broken");
    EXPECT_EQ(exception.Raised().errorNumber, 3);
  }
}

TEST_F(Language, RefusesDeepNestingAndTakesLongLines) {
  constexpr std::size_t kMany = 200'000;
  const auto repeated = [](std::string_view text) {
    std::string all;
    for (std::size_t i = 0; i < kMany; ++i) all += text;
    return all;
  };
  const std::string tooDeep = "line 1: this is nested too deeply";
  EXPECT_EQ(Run("Print " + repeated("(") + "1" + repeated(")")), tooDeep);
  EXPECT_EQ(Run("Print " + repeated("-") + "1"), tooDeep);
  EXPECT_EQ(Run("Print 1" + repeated(".a")), tooDeep);
  EXPECT_EQ(Run("Print " + repeated("New CounterZKT(")), tooDeep);
  EXPECT_EQ(Run("Print 1" + repeated("+1")), "200001\n");
}

TEST_F(Language, GivesBackWhatWasLentWhenADelegateThrows) {
  EXPECT_EQ(Run("Var text As String = \"before\"\nActZKT(AddressOf CrashByException, text)"),
            "line 2: thrown by a delegate");
}

using LanguageDeathTest = Language;

TEST_F(LanguageDeathTest, CrashFunctionsCrash) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  const std::string declaration = "Var text As String\n";
  EXPECT_DEATH(Run(declaration + "ActZKT(AddressOf CrashByNullPointer, text)"), "");
  EXPECT_DEATH(Run(declaration + "ActZKT(AddressOf CrashByAbort, text)"), "");
}

TEST_F(Language, PutsInstanceDataWhereTheRecordSays) {
  const host::ObjectClass* const counter = host::FindClass("CounterZKT");
  const host::ObjectClass* const failure = host::FindClass("FailureExceptionZKT");
  EXPECT_GE(counter->record->forSystemUse, sizeof(REALobjectStruct));
  EXPECT_NE(counter->record->forSystemUse, failure->record->forSystemUse);
}

TEST(References, TellsWhatIsLeftAndWhatWasReleasedTooOften) {
  auto* const text = host::MakeString("left over");
  EXPECT_NE(host::DescribeReferences(host::ReportReferences()).find("string \"left over\" with 1 reference"),
            std::string::npos);
  host::Release(text);
  EXPECT_TRUE(host::ReportReferences().IsBalanced());
  host::Release(text);
  EXPECT_EQ(host::ReportReferences().errors.size(), 1u);
}

}  // namespace
