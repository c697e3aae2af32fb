// Tests which program ConsoleExecuteZKT starts, and what it passes to the program.
#include <cstdlib>
#include <filesystem>

#include "core/folder_items.h"
#include "plugin/process/console_execute_fixture.h"
#include "process/string_store.h"

namespace {

using namespace tests;

Texts Numbered(const char* prefix, int count) {
  Texts texts;
  for (int i = 0; i < count; ++i) texts.push_back(prefix + std::to_string(i));
  return texts;
}

Texts First64(Texts texts) {
  texts.resize(std::min<std::size_t>(texts.size(), 64));
  return texts;
}

TEST_F(ConsoleExecute, PassesArgumentsAndEnvironmentByteForByte) {
  const struct {
    const char* note;
    Texts arguments;
    Texts environment;
  } cases[] = {
      {"one", {"show"}, {"A=1"}},
      {"spaces, quotes, special characters",
       {"show", "a b", "'\"`$HOME\\", "*", "-x", "\n\t"},
       {"A=a b", "B", "=", "C=='\""}},
      {"empty elements", {"show", "", "x", ""}, {"", "A="}},
      {"not ASCII", {"show", "übel", "日本", "e\xCC\x81", "𝄞"}, {"Ä=ö"}},
      {"64", Numbered("argument ", 64), Numbered("V=", 64)},
      {"70", Numbered("argument ", 70), Numbered("V=", 70)},
      {"long", {"show", std::string(100'000, 'x')}, {"A=" + std::string(100'000, 'y')}},
      {"no environment", {"show"}, {}},
  };
  RunInChild([&] {
    ::setenv("INHERITED", "no", 1);
    for (const auto& c : cases) {
      const Outcome outcome = Run([&] { return Execute(ZKT_SHOW_ARGUMENTS, c.arguments, c.environment); });
      EXPECT_EQ(outcome.status, 0) << c.note;
      EXPECT_EQ(outcome.output, Shown(First64(c.arguments), First64(c.environment))) << c.note;
    }
    ExpectBalance();
  });
}

TEST_F(ConsoleExecute, AcceptsEmptyAndNilArrays) {
  RunInChild([] {
    const Outcome outcomes[] = {Run([] { return Execute(ZKT_SHOW_ARGUMENTS, {}, {}); }), Run([] {
                                  return zkt::ConsoleExecuteZKT(MakeString(ZKT_SHOW_ARGUMENTS).Get(), nullptr, nullptr);
                                })};
    for (const Outcome& outcome : outcomes) {
      EXPECT_EQ(outcome.status, 0);
      // Since version 5.18, Linux passes one empty argument to a program that is started without arguments.
      EXPECT_TRUE(outcome.output == Shown({}, {}) || outcome.output == Shown({""}, {})) << outcome.output;
    }
    ExpectBalance();
  });
}

TEST_F(ConsoleExecute, ConvertsTextsToUTF8) {
  RunInChild([] {
    const Outcome outcome = Run([] {
      return zkt::ConsoleExecuteZKT(MakeString(ZKT_SHOW_ARGUMENTS, zkt::kEncodingMacRoman).Get(),
                                    Native(MakeArray({"\xE9", "a"}, zkt::kEncodingISOLatin1)),
                                    Native(MakeArray({std::string("=\0\xAC\x20", 4)}, zkt::kEncodingUTF16)));
    });
    EXPECT_EQ(outcome.output, Shown({"é", "a"}, {"=€"}));
    ExpectBalance();
  });
}

// The bytes after an unterminated string are not part of it.
TEST_F(ConsoleExecute, DoesNotReadPastTheEndOfStrings) {
  RunInChild([] {
    const auto unterminate = [](REALstring string) { string->Bytes()[string->length] = 'Z'; };
    const host::StringRef path = MakeString(ZKT_SHOW_ARGUMENTS);
    const host::ArrayRef arguments = MakeArray({"show", "a"});
    unterminate(path.Get());
    for (const std::int64_t i : {0, 1}) unterminate(host::ElementAt<REALstring>(arguments.Get(), i));
    EXPECT_EQ(Run([&] { return zkt::ConsoleExecuteZKT(path.Get(), Native(arguments), nullptr); }).output,
              Shown({"show", "a"}, {}));
  });
}

TEST_F(ConsoleExecute, UsesOnlyTheFirstElementWithoutAnUpperBound) {
  RunInChild([] {
    const tests::ServiceWithheld without(zkt::REALGetArrayUBound);
    EXPECT_EQ(Run([] { return Execute(ZKT_SHOW_ARGUMENTS, {"a", "b"}, {"C=", "D="}); }).output, Shown({"a"}, {"C="}));
  });
}

TEST_F(ConsoleExecute, AcceptsFolderItems) {
  const auto folder = std::filesystem::temp_directory_path() / ("zkt-cafe\xCC\x81-" + std::to_string(::getpid()));
  std::filesystem::create_directory(folder);
  std::filesystem::create_symlink(ZKT_SHOW_ARGUMENTS, folder / "show it");
  const std::string precomposed =
      std::filesystem::temp_directory_path().string() + "/zkt-caf\xC3\xA9-" + std::to_string(::getpid()) + "/show it";
  for (const double version : {2024.03, 2012.5}) {
    SetVersion(version);
    RunInChild([&] {
      {
        const host::ObjectRef item(host::MakeObject(host::FindClass("FolderItem")));
        ASSERT_TRUE(host::SetPath(item.Get(), precomposed, host::PathMode::kNative));
        const Outcome outcome = Run(
            [&] { return zkt::ConsoleExecuteZKTf(item.Get(), Native(MakeArray({"a"})), Native(MakeArray({"B="}))); });
        EXPECT_EQ(outcome.output, Shown({"a"}, {"B="})) << version;
      }
      ExpectBalance();
    });
  }
  std::filesystem::remove_all(folder);
}

// On Linux, file names are plain bytes. A file with a composed name is found, but a file with the decomposed form of
// the name takes precedence.
TEST_F(ConsoleExecute, FindsFilesWithComposedNames) {
  const auto folder = std::filesystem::temp_directory_path() / ("zkt-" + std::to_string(::getpid()));
  std::filesystem::create_directory(folder);
  const struct {
    const char* note;
    const char* saved;
    const char* given;
    int status;
  } cases[] = {
      {"Latin", "caf\xC3\xA9", "caf\xC3\xA9", 0},
      {"Hangul", "\xED\x95\x9C", "\xED\x95\x9C", 0},
      {"Angstrom sign", "\xE2\x84\xAB", "\xE2\x84\xAB", 0},
      {"saved decomposed", "nai\xCC\x88ve", "na\xC3\xAFve", 0},
      {"neither", "u\xCC\x88", "o\xCC\x88", W_EXITCODE(1, 0)},
  };
  for (const auto& c : cases) {
    std::filesystem::create_symlink("/bin/true", folder / c.saved);
    RunInChild([&] {
      const host::ObjectRef item(host::MakeObject(host::FindClass("FolderItem")));
      ASSERT_TRUE(host::SetPath(item.Get(), (folder / c.given).string(), host::PathMode::kNative));
      EXPECT_EQ(Run([&] { return zkt::ConsoleExecuteZKTf(item.Get(), Native(MakeArray({"true"})), nullptr); }).status,
                c.status)
          << c.note;
    });
  }
  std::filesystem::remove_all(folder);
}

TEST_F(ConsoleExecute, LogsATextThatIsLinkedTwice) {
  const auto linkTwice = [] {
    zkt::StringStore texts;
    EXPECT_STREQ(texts.Keep(nullptr), "");  // must log nothing
    zkt::StringStore::Text other(nullptr);
    auto* const linked = new zkt::StringStore::Text(nullptr);
    linked->next = &other;
    texts.Link(linked);
  };
  EXPECT_EQ(tests::TraceOf(linkTwice), "Warning: Next already set!|");
}

}  // namespace
