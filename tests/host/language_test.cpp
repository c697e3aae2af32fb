// Tests the parts of the development host's language that a script alone cannot test.
#include "core/strings.h"
#include "host/script_test.h"
#include "support/fresh_plugin.h"

namespace {

class Language : public tests::ScriptTest {
 protected:
  static void SetUpTestSuite() { tests::LoadFreshPlugin(); }
};

TEST_F(Language, RunsTheTable) { ExpectTable("host/language.tsv"); }

TEST_F(Language, RejectsDeepNestingAndAcceptsLongLines) {
  constexpr std::size_t kMany = 200'000;
  const auto repeated = [](std::string_view text) {
    std::string all;
    for (std::size_t i = 0; i < kMany; ++i) all += text;
    return all;
  };
  const auto expectTooDeep = [](const std::string& script) {
    EXPECT_TRUE(Run(script).ends_with(": the code is nested too deeply")) << script.substr(0, 20);
  };
  expectTooDeep("Print " + repeated("(") + "1" + repeated(")"));
  expectTooDeep("Var n As Integer = " + repeated("-") + "a");
  expectTooDeep("Print a" + repeated(".a"));
  expectTooDeep("Print " + repeated("New CounterZKT("));
  expectTooDeep(repeated("While True\n"));
  EXPECT_EQ(Run("Var n As Integer = 1" + repeated("+1") + "\nPrint n.ToString"), "200001\n");
}

// The names of array members are those in the Xojo version that the host emulates.
TEST_F(Language, NamesArrayMembersLikeTheHostVersion) {
  const std::string declaration = "Var a() As Int32\n";
  const struct {
    double version;
    const char* known;
    const char* unknown;
  } cases[] = {
      {2019.01, "a.Append 1\nPrint a.UBound.ToString", "a.AddRow 1"},
      {2019.02, "a.AddRow 1\nPrint a.LastRowIndex.ToString", "a.Append 1"},
      {2020.01, "a.Add 1\nPrint a.LastIndex.ToString", "a.AddRow 1"},
  };
  for (const auto& c : cases) {
    host::Host::Current().version = c.version;
    EXPECT_EQ(Run(declaration + c.known), "0\n") << c.version;
    EXPECT_NE(Run(declaration + c.unknown).find("Int32() has no A"), std::string::npos) << c.version;
  }
  host::Host::Current().version = 2024.03;
}

// A native function borrows a variable of the script. If a delegate throws an exception, the script gets the variable
// back.
TEST_F(Language, ReturnsBorrowedVariablesWhenADelegateThrows) {
  EXPECT_EQ(Run("Sub Fail\nRaise New InvalidArgumentException(\"thrown by a delegate\", 1)\nEnd Sub\n"
                "Var text As String = \"before\"\nTry\nActZKT(AddressOf Fail, text)\n"
                "Catch e As InvalidArgumentException\nPrint e.Message\nEnd Try"),
            "thrown by a delegate\n");
}

// The interactive prompt passes one source at a time to the same interpreter.
TEST_F(Language, KeepsVariablesAndMethodsBetweenSources) {
  const host::Catalogue catalogue(host::Host::Current());
  std::ostringstream out;
  host::Interpreter interpreter(catalogue, out);
  interpreter.Run("Var n As Integer = 2");
  EXPECT_THROW(interpreter.Run("If n = 2 Then\n"), host::IncompleteError);
  EXPECT_THROW(interpreter.Run("Function Twice(x As Integer) As Integer\n"), host::IncompleteError);
  interpreter.Run("Function Twice(x As Integer) As Integer\nReturn 2 * x\nEnd Function");
  EXPECT_THROW(interpreter.Run("Var m As Integer = 1\nm = \"x\""), host::ScriptError);
  EXPECT_THROW(interpreter.Run("Print m.ToString"), host::ScriptError) << "a source with an error declares nothing";
  EXPECT_THROW(interpreter.Run("While n = 2\nn = \"x\"\nWend"), host::ScriptError);
  EXPECT_THROW(interpreter.Run("Exit"), host::ScriptError) << "a source with an error leaves no loop open";
  EXPECT_THROW(interpreter.Run("Var n As Integer = 5\nVar n As Integer"), host::ScriptError);
  interpreter.Run("Try\nRaise New RuntimeException\nCatch n\nEnd Try\nFor n As Integer = 7 To 8\nNext");
  interpreter.Run("Print Twice(n).ToString");
  interpreter.Run("Var n As String = \"again\"");
  interpreter.Run("Print n");
  EXPECT_EQ(out.str(), "4\nagain\n");
}

using LanguageDeathTest = Language;

TEST_F(LanguageDeathTest, NothingChecksAPtr) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_DEATH(Run("Var p As Ptr\nPrint p.Int32(0).ToString"), "");
  EXPECT_DEATH(Run("Var p As Ptr = Ptr(16)\np.UInt64(0) = 1"), "");
}

TEST_F(Language, StoresTheInstanceDataOffsetInTheRecord) {
  const host::ObjectClass* const counter = host::FindClass("CounterZKT");
  const host::ObjectClass* const failure = host::FindClass("FailureExceptionZKT");
  EXPECT_GE(counter->record->forSystemUse, sizeof(REALobjectStruct));
  EXPECT_NE(counter->record->forSystemUse, failure->record->forSystemUse);
}

TEST(References, ReportsLeaksAndExcessReleases) {
  auto* const text = host::MakeString("left over");
  EXPECT_NE(host::DescribeReferences(host::ReportReferences()).find("string \"left over\" with 1 reference"),
            std::string::npos);
  host::Release(text);
  EXPECT_TRUE(host::ReportReferences().IsBalanced());
  host::Release(text);
  EXPECT_EQ(host::ReportReferences().errors.size(), 1u);
}

}  // namespace
