// The development host's own language: what scripts cannot show, because it ends them.
#include <gtest/gtest.h>

#include <sstream>

#include "core/plugin_library.h"
#include "core/strings.h"
#include "language/catalogue.h"
#include "language/errors.h"
#include "language/interpreter.h"

namespace {

class Language : public testing::Test {
 protected:
  static void SetUpTestSuite() { host::LoadPlugin(ZKT_SAMPLE_PLUGIN); }

  ~Language() override {
    const host::Ledger ledger = host::TakeLedger();
    EXPECT_TRUE(ledger.IsBalanced()) << host::DescribeLedger(ledger);
  }

  // What the script printed, and the error that ended it.
  static std::string Run(std::string_view script) {
    const host::Catalogue catalogue(host::Host::Current());
    std::ostringstream out;
    host::Interpreter interpreter(catalogue, out);
    try {
      interpreter.RunScript(script);
    } catch (const host::ScriptError& error) {
      out << error.what();
    }
    return out.str();
  }
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
      {"Var a() As Int32 = Array(1, \"x\")", "line 1: the elements of Array have several types"},
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

TEST_F(Language, PutsInstanceDataWhereTheRecordSays) {
  const host::ObjectClass* const counter = host::FindClass("CounterZKT");
  const host::ObjectClass* const failure = host::FindClass("FailureExceptionZKT");
  EXPECT_GE(counter->record->forSystemUse, sizeof(REALobjectStruct));
  EXPECT_NE(counter->record->forSystemUse, failure->record->forSystemUse);
}

TEST(Ledger, TellsWhatIsLeftAndWhatWasReleasedTooOften) {
  auto* const text = host::MakeString("left over");
  EXPECT_NE(host::DescribeLedger(host::TakeLedger()).find("string \"left over\" with 1 reference"), std::string::npos);
  host::Unlock(text);
  EXPECT_TRUE(host::TakeLedger().IsBalanced());
  host::Unlock(text);
  EXPECT_EQ(host::TakeLedger().faults.size(), 1u);
}

}  // namespace
