// The development host's own language: what scripts cannot show, because it ends them.
#include "core/strings.h"
#include "host/script_test.h"
#include "support/fresh_plugin.h"

namespace {

class Language : public tests::ScriptTest {
 protected:
  static void SetUpTestSuite() { tests::LoadFreshPlugin(); }
};

TEST_F(Language, SaysWhatIsWrongWithCode) {
  const std::pair<const char*, const char*> cases[] = {
      {"Print nothing", "line 1: there is no nothing"},
      {"\n\nPrint (1", "line 3: missing )"},
      {"Print \"a", "line 1: a text does not end"},
      {"Print 1 2", "line 1: cannot read on at 2"},
      {"Print #", "line 1: cannot read #"},
      {"Var a", "line 1: missing As and a type"},
      {"Var a As Nonsense", "line 1: there is no type Nonsense"},
      {"Var a As Int32 = \"x\"", "line 1: cannot use x as Int32"},
      {"Var a As Int32 = 2147483648", "line 1: cannot use 2147483648 as Int32"},
      {"Var a As UInt32 = -1", "line 1: cannot use -1 as UInt32"},
      {"Var a() As Int32 = Array(1, \"x\")", "line 1: cannot use 1, x as Int32()"},
      {"a = 1", "line 1: there is no a"},
      {"\"a\" = 1", "line 1: this cannot be assigned"},
      {"Print 1 + \"a\"", "line 1: cannot compute with +"},
      {"Print SameZKT(\"a\")", "line 1: no SameZKT takes these arguments"},
      {"Print SameZKT()", "line 1: no SameZKT takes these arguments"},
      {"ExchangeZKT(1.5, 2.5)", "line 1: no ExchangeZKT takes these arguments"},
      {"Print HiddenZKT", "line 1: there is no HiddenZKT"},
      {"Print JoinZKT(\"a\", \"b\")", "line 1: there is no JoinZKT"},
      {"Print \"a\".SameZKT", "line 1: String has no SameZKT"},
      {"Print ToolsZKT.Nothing", "line 1: ToolsZKT has no Nothing"},
      {"ToolsZKT.FixedLevel = 1", "line 1: FixedLevel is read-only"},
      {"Var c As New CounterZKT\nc.Count = 1", "line 2: Count is read-only"},
      {"Var c As New CounterZKT(1, 2, 3)", "line 1: no Constructor takes these arguments"},
      {"Var c As New Nothing", "line 1: there is no type Nothing"},
      {"Print 18446744073709551616", "line 1: cannot read the number 18446744073709551616"},
      {"Print 1\nPrint -9223372036854775809", "1\nline 2: cannot read the number -9223372036854775809"},
      {"Print &h10000000000000000", "line 1: cannot read the number &h10000000000000000"},
      {"Print 1e400", "line 1: cannot read the number 1e400"},
      {"Print 1e", "line 1: cannot read the number 1e"},
      {"Var a As Int64 = 1e19", "line 1: cannot use 1e+19 as Integer"},
      {"Var a As Int32 = 2147483648.0", "line 1: cannot use 2147483648 as Int32"},
      {"Var a As UInt64 = -1.0", "line 1: cannot use -1 as UInt64"},
      {"Var a As Currency = 922337203685477.5808", "line 1: cannot use 922337203685478 as Currency"},
      {"Var a As Currency = 922337203685477.5807\nPrint a + 1", "line 2: the result does not fit into Currency"},
      {"Var a() As Int32 = Array(1)\nPrint Array(a, a, a, a)", "line 2: this cannot be an element of Array"},
      {"Var a(2147483647) As Int32", "line 1: an array cannot have the upper bound 2147483647"},
      {"Print 1, (2", "line 1: missing )"},
      {"Var f As New FolderItem(\"\")", "line 1: a FolderItem cannot be made of "},
      {"Var f As New FolderItem(\"/a\", FolderItem.PathModes.Shell)", "line 1: a FolderItem cannot be made of /a"},
      {"Var f As New FolderItem(\"/a\", FolderItem.PathModes.URL)", "line 1: a FolderItem cannot be made of /a"},
      {"Var f As New FolderItem(\"/a\")\nf.NativePath = \"/b\"", "line 2: NativePath is read-only"},
      {"Print FolderItem.PathModes.Other", "line 1: there is no FolderItem"},
      {"FailZKT(\"never runs\", 1) +", "line 1: cannot read on at +"},
      {"Var a, b As Int32\nPrint TieZKT(a, b)", "line 2: TieZKT is ambiguous with these arguments"},
      {"Var a As Int32\nPrint a(0)", "line 2: Int32 has no elements"},
      {"Var a As New CounterZKT\nVar b As FailureExceptionZKT = a",
       "line 2: cannot use CounterZKT as FailureExceptionZKT"},
      {"Var a As RuntimeException = New FailureExceptionZKT\nVar b As FailureExceptionZKT = a",
       "line 2: cannot use FailureExceptionZKT as FailureExceptionZKT"},
      {"Var a As ActionZKT = AddressOf CompareAscending", "line 1: cannot use AddressOf CompareAscending as ActionZKT"},
      {"Var a As UnlikeZKT = AddressOf AlwaysZero", "line 1: cannot use AddressOf AlwaysZero as UnlikeZKT"},
      {"Var a As CompareInt32ZKT = AddressOf CompareByLength",
       "line 1: cannot use AddressOf CompareByLength as CompareInt32ZKT"},
      {"Print CompareZKT(AddressOf CrashByAbort, 1, 2)", "line 1: no CompareZKT takes these arguments"},
      {"Print CompareZKT(AddressOf Nothing, 1, 2)", "line 1: there is no function Nothing to take the address of"},
  };
  for (const auto& [script, want] : cases) EXPECT_EQ(Run(script), want) << script;
}

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

TEST_F(Language, ContinuesLines) {
  const std::pair<const char*, const char*> cases[] = {
      {"Print 1 + _\n2", "3\n"},       {"Print 1 + _ ' more\n  2 // no more _\nPrint 4", "3\n4\n"},
      {"' nothing _\nPrint 1", "1\n"}, {"Rem nothing _\nPrint 1", "1\n"},
      {"Print \"' _\"", "' _\n"},      {"\xEF\xBB\xBFPrint 1", "1\n"},
      {"Print _\n\nPrint 2", "\n2\n"}, {"Print _\n1\nPrint (", "1\nline 3: missing a name"},
  };
  for (const auto& [script, want] : cases) EXPECT_EQ(Run(script), want) << script;
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
