#include "support/host_fixture.h"

namespace {

using tests::ServiceWithheld;

using HostServices = tests::HostTest;

TEST_F(HostServices, AreLookedUpOnceWhenAvailable) {
  zkt::HostBindingTestAccess::Forget(zkt::REALGetStringEncoding);
  const host::StringRef string = tests::MakeString("text");
  const int before = LookupCount("REALGetStringEncoding");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(zkt::REALGetStringEncoding(string.Get()), zkt::kEncodingUTF8);
  EXPECT_EQ(LookupCount("REALGetStringEncoding"), before + 1);
}

TEST_F(HostServices, AreLookedUpAtEveryCallUntilAvailable) {
  const host::StringRef string = tests::MakeString("text");
  {
    const ServiceWithheld absent(zkt::REALGetStringEncoding);
    const int before = LookupCount("REALGetStringEncoding");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(zkt::REALGetStringEncoding(string.Get()), 0u);
    EXPECT_EQ(LookupCount("REALGetStringEncoding"), before + 3);
  }
  EXPECT_EQ(zkt::REALGetStringEncoding(string.Get()), zkt::kEncodingUTF8) << "found as soon as it is available";
}

TEST_F(HostServices, ReturnTheNeutralValueWhenAbsent) {
  const ServiceWithheld noArrays(zkt::REALCreateArray);
  EXPECT_EQ(zkt::REALCreateArray(zkt::kArrayOfString, -1), nullptr);
  const ServiceWithheld noRuntime(zkt::REALinRuntime);
  EXPECT_FALSE(zkt::REALinRuntime());
  const ServiceWithheld noInserter(zkt::REALInsertArrayValueString);
  zkt::REALInsertArrayValueString(nullptr, 0, nullptr);
}

TEST_F(HostServices, LoadFrameworkFunctionsThroughTheirOwnSlot) {
  const host::StringRef string = tests::MakeString("é");
  const ServiceWithheld absent(zkt::REALGetStringBytes);
  const zkt::StringContents contents = zkt::REALGetStringContents(string.Get());
  EXPECT_EQ(contents.bytes, nullptr);
  EXPECT_EQ(contents.count, 2);
}

}  // namespace
