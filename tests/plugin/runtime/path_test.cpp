#include "runtime/path.h"

#include "core/folder_items.h"
#include "platform/linux/file_url.h"
#include "support/host_fixture.h"
#include "support/table.h"

namespace {

using tests::MakeString;

class Paths : public tests::HostTest {
 protected:
  static host::ObjectRef MakeFolderItem(const std::string& path) {
    host::ObjectRef item(host::MakeObject(host::FindClass("FolderItem")));
    EXPECT_TRUE(path.empty() || host::SetPath(item.Get(), path, host::PathMode::kNative));
    return item;
  }

  // Sets a property that the host reports for the item.
  static void SetProperty(const host::ObjectRef& item, const char* name, std::string_view text) {
    *host::FindProperty(item.Get(), name) = host::MakeValue(text);
  }

  static std::string PathOf(zkt::rbPath path) {
    const char* const text = path.GetUnixPath();
    return text != nullptr ? text : "nil";
  }
  static std::string PathAsGiven(zkt::rbPath path) {
    const char* const text = path.GetPathAsGiven();
    return text != nullptr ? text : "nil";
  }
  static std::string PathOf(const host::ObjectRef& item) { return PathOf(zkt::rbPath::OfFolderItem(item.Get())); }
};

TEST_F(Paths, AreDecomposed) {
  const struct {
    const char* note;
    std::string path;
    std::string want;
  } cases[] = {
      {"ASCII", "/usr/bin/env", "/usr/bin/env"},
      {"space and punctuation", "/a b/100%/#1?", "/a b/100%/#1?"},
      {"precomposed", "/caf\xC3\xA9", "/cafe\xCC\x81"},
      {"already decomposed", "/cafe\xCC\x81", "/cafe\xCC\x81"},
      {"beyond the basic plane", "/𝄞", "/𝄞"},
      {"trailing slash", "/tmp/", "/tmp"},
      {"root", "/", "/"},
      {"long", "/" + std::string(3000, 'x'), "/" + std::string(3000, 'x')},
  };
  for (const double version : {2024.03, 2013.0, 2012.5}) {
    SetVersion(version);
    for (const auto& c : cases) EXPECT_EQ(PathOf(MakeFolderItem(c.path)), c.want) << version << ", " << c.note;
  }
  // Each character decomposes into three characters of three bytes each, which is the longest possible result.
  std::string many;
  std::string taken;
  for (int i = 0; i < 1000; ++i) {
    many += "\uAC01";
    taken += "\u1100\u1161\u11A8";
  }
  SetVersion(2024.03);
  EXPECT_EQ(PathOf(MakeFolderItem(many)), taken);
}

TEST_F(Paths, AreAlsoAvailableUnchanged) {
  for (const char* const path : {"/caf\xC3\xA9", "/cafe\xCC\x81", "/\xED\x95\x9C"}) {
    EXPECT_EQ(PathAsGiven(zkt::rbPath::OfFolderItem(MakeFolderItem(path).Get())), path);
    EXPECT_EQ(PathAsGiven(zkt::rbPath::OfString(MakeString(path).Get())), path);
  }
  EXPECT_EQ(PathAsGiven(zkt::rbPath::OfFolderItem(nullptr)), "nil");
}

TEST_F(Paths, FromStringsKeepTheirSlashes) {
  EXPECT_EQ(PathOf(zkt::rbPath::OfString(MakeString("/caf\xC3\xA9/").Get())), "/cafe\xCC\x81/");
  EXPECT_EQ(PathOf(zkt::rbPath::OfString(MakeString("/\xE9", zkt::kEncodingISOLatin1).Get())), "/e\xCC\x81");
  EXPECT_EQ(PathOf(zkt::rbPath::OfString(nullptr)), "nil");
  EXPECT_EQ(PathOf(zkt::rbPath::OfString(MakeString("").Get())), "nil");
}

TEST_F(Paths, AreNilWhenTheHostProvidesNone) {
  EXPECT_EQ(PathOf(zkt::rbPath::OfFolderItem(nullptr)), "nil");
  for (const double version : {2024.03, 2012.5}) {
    SetVersion(version);
    EXPECT_EQ(PathOf(MakeFolderItem("")), "nil") << "empty path";
    const host::ObjectRef other(host::MakeObject(host::FindClass("Date")));
    EXPECT_EQ(PathOf(other), "nil") << "property missing";
    const tests::ServiceWithheld without(zkt::REALGetPropValueString);
    EXPECT_EQ(PathOf(MakeFolderItem("/tmp")), "nil") << "service missing";
  }
  zkt::HostBindingTestAccess::Forget(zkt::REALGetPropValueString);
  SetVersion(2024.03);
  const host::ObjectRef broken = MakeFolderItem("/tmp");
  SetProperty(broken, "NativePath", "\xFF");
  EXPECT_EQ(PathOf(broken), "nil") << "invalid text";
}

TEST_F(Paths, AreComputedOnce) {
  static int reads = 0;
  zkt::HostBindingTestAccess::Bind(zkt::REALGetPropValueString,
                                   [](REALobject, const char*, REALstring* value) -> REALboolean {
                                     ++reads;
                                     *value = host::MakeString("/tmp");
                                     return 1;
                                   });
  const host::ObjectRef item = MakeFolderItem("/tmp");
  zkt::rbPath path = zkt::rbPath::OfFolderItem(item.Get());
  const char* const first = path.GetUnixPath();
  EXPECT_STREQ(first, "/tmp");
  EXPECT_EQ(path.GetUnixPath(), first);
  EXPECT_STREQ(path.GetPathAsGiven(), "/tmp");
  EXPECT_EQ(reads, 1);
  zkt::HostBindingTestAccess::Bind(zkt::REALGetPropValueString,
                                   [](REALobject, const char*, REALstring*) -> REALboolean { return ++reads, 0; });
  zkt::rbPath none = zkt::rbPath::OfFolderItem(item.Get());
  for (int i = 0; i < 2; ++i) EXPECT_EQ(none.GetUnixPath(), nullptr);
  EXPECT_EQ(reads, 2) << "a failure is also cached";
  zkt::HostBindingTestAccess::Forget(zkt::REALGetPropValueString);
}

TEST_F(Paths, AreShownInTheDebugLog) {
  const struct {
    double version;
    const char* want;
  } cases[] = {{2013.0, "!native path: /a b|"}, {2012.5, "!url path: file:///a%20b|"}};
  for (const auto& c : cases) {
    SetVersion(c.version);
    const host::ObjectRef item = MakeFolderItem("/a b");
    EXPECT_EQ(tests::LogOf([&] { PathOf(item); }), "") << c.version;
    EXPECT_EQ(tests::TraceOf([&] { PathOf(item); }), c.want) << c.version;
  }
}

// A log line has at most 4095 bytes. Invalid text is logged up to the error.
TEST_F(Paths, AreTruncatedInTheDebugLog) {
  const auto logOf = [](const host::StringRef& path) {
    const host::ObjectRef item = MakeFolderItem("/tmp");
    *host::FindProperty(item.Get(), "NativePath") = {{host::TypeKind::kString, false, {}}, path};
    return tests::TraceOf([&] { PathOf(item); });
  };
  const auto repeated = [](std::string_view text, int count) {
    std::string all;
    while (count-- > 0) all += text;
    return all;
  };
  EXPECT_EQ(logOf(MakeString("/" + std::string(4200, 'x'))), "!native path: /" + std::string(4081, 'x') + "|");
  EXPECT_EQ(logOf(MakeString("/a" + repeated("é", 3000))), "!native path: /a" + repeated("é", 2040) + "|");
  EXPECT_EQ(logOf(MakeString(std::string_view("/\0\x34\xD8z\0", 6), zkt::kEncodingUTF16)), "!native path: /?z|");
}

TEST(FileURL, YieldsItsPath) {
  for (const tests::Row& row : tests::ReadTable("plugin/runtime/file_urls.tsv", 2)) {
    const auto path = zkt::PathOfURL(row[0]);
    EXPECT_EQ(path ? "<" + *path + ">" : "no URL", row[1]) << row[0];
  }
}

}  // namespace
