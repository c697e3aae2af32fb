// Tests what the library does when a host loads it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "services/members.h"
#include "support/fresh_plugin.h"

namespace {

class Startup : public testing::Test {
 protected:
  ~Startup() override {
    ::unsetenv("ZKTDEBUG");
    host_ = {};
  }

  static std::string LogOfLoading() {
    testing::internal::CaptureStderr();
    tests::LoadFreshPlugin();
    return testing::internal::GetCapturedStderr();
  }

  host::Host& host_ = host::Host::Current();
};

TEST_F(Startup, AnnouncesTheInterfaceLevelOfTheHostVersion) {
  const struct {
    double version;
    int level;
  } cases[] = {{3000.0, 13}, {2013.04, 13}, {2013.039, 12}, {2013.03, 12}, {2013.029, 11}, {2013.0, 11},
               {2012.5, 10}, {2012.0, 10},  {2011.99, 9},   {2010.0, 9},   {0.0, 9}};
  for (const auto& c : cases) {
    host_.version = c.version;
    tests::LoadFreshPlugin();
    EXPECT_EQ(host_.interfaceLevel, c.level) << c.version;
  }
}

TEST_F(Startup, TreatsAHostWithoutVersionAsOld) {
  host_.withheld.insert("REALGetRBVersion");
  tests::LoadFreshPlugin();
  EXPECT_EQ(host_.interfaceLevel, 9);
  EXPECT_TRUE(host_.Modules().empty());
  EXPECT_FALSE(host_.GlobalMethods().empty());
}

// The library must stay loaded, because threads that have used it call one of its functions when they end.
TEST_F(Startup, KeepsTheLibraryLoaded) {
  void* const library = ::dlopen(ZKT_PLUGIN, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << ::dlerror();
  ::dlclose(library);
  EXPECT_NE(::dlopen(ZKT_PLUGIN, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(Startup, DoesNothingWithoutAResolver) {
  tests::LoadFreshPlugin(nullptr);
  EXPECT_EQ(host_.interfaceLevel, 0);
  EXPECT_TRUE(host_.lookupCounts.empty());
}

TEST_F(Startup, HappensOnce) {
  using Main = void (*)(zkt::Resolver);
  for (const double version : {2012.5, 2024.03}) {
    host_.version = version;
    const std::string copy = tests::LoadFreshPlugin();
    const auto registrations = host_.registrations;
    const auto lookupCounts = host_.lookupCounts;
    const auto main = reinterpret_cast<Main>(::dlsym(::dlopen(copy.c_str(), RTLD_NOW | RTLD_NOLOAD), "REALPluginMain"));
    ASSERT_NE(main, nullptr);
    main(&host::Resolve);
    main(nullptr);
    EXPECT_EQ(host_.registrations.size(), registrations.size()) << version;
    EXPECT_EQ(host_.lookupCounts, lookupCounts) << version;
  }
}

TEST_F(Startup, PutsGlobalMethodsIntoAModuleOrRegistersThemOneByOne) {
  const struct {
    double version;
    bool asModule;
  } cases[] = {{2012.5, false}, {2013.0, true}, {2024.03, true}, {2999.0, true}, {3000.0, false}};
  for (const auto& c : cases) {
    host_.version = c.version;
    tests::LoadFreshPlugin();
    EXPECT_EQ(host_.GlobalMethods().empty(), c.asModule) << c.version;
    EXPECT_NE(host::FindNativeFunction(host_, "SplitCommaSeparatedValuesZKT"), nullptr) << c.version;
    if (!c.asModule) continue;
    ASSERT_FALSE(host_.Modules().empty()) << c.version;
    const zkt::REALmoduleDefinition& module = *host_.Modules().back();
    EXPECT_STREQ(module.name, "UtilGlobalsZKT");
    EXPECT_EQ(module.methods[module.methodCount - 1].flags & 0x14u, 0x14u);
    ASSERT_EQ(module.propertyCount, 1u);
    EXPECT_STREQ(module.properties[0].name, "Debugging");
  }
}

TEST_F(Startup, ReadsTheDebugSwitchFromTheEnvironment) {
  const struct {
    const char* value;
    bool on;
  } cases[] = {{"1", true},  {"true", true}, {"TRUE", true},  {"Yes", true}, {"on", false},
               {"2", false}, {"", false},    {"yes ", false}, {"0", false}};
  for (const auto& c : cases) {
    ::setenv("ZKTDEBUG", c.value, 1);
    const std::string want =
        "ZKT Debug: ZKT debug logging enabled.\nLoading Util in Xojo 2024.03 and plugin SDK version 13...\n";
    EXPECT_EQ(LogOfLoading(), c.on ? want : "") << c.value;
  }
}

TEST_F(Startup, RegistersTheDebugSwitch) {
  tests::LoadFreshPlugin();
  const auto setDebugging = reinterpret_cast<void (*)(bool)>(host_.Modules().back()->properties[0].setter);
  testing::internal::CaptureStderr();
  for (const bool isOn : {true, false}) setDebugging(isOn);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "ZKT Debug: ZKT debug logging enabled.\n");
}

TEST_F(Startup, LogsLoadingInTheDevelopmentEnvironmentOnly) {
  ::setenv("ZKTDEBUG", "1", 1);
  host_.isBuiltApplication = true;
  EXPECT_EQ(LogOfLoading(), "ZKT Debug: ZKT debug logging enabled.\n");
  host_.withheld.insert("REALinRuntime");
  EXPECT_NE(LogOfLoading().find("Loading Util"), std::string::npos);
}

TEST_F(Startup, BindsNoServiceInAdvance) {
  tests::LoadFreshPlugin();
  const std::map<std::string, int, std::less<>> want = {
      {"REALGetRBVersion", 1}, {"RegisterPluginVersion", 1}, {"PluginRegisterClass", 1}, {"PluginRegisterModule", 1}};
  EXPECT_EQ(host_.lookupCounts, want);
}

}  // namespace
