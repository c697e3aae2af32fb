// Tests the records that the host receives: they have the flags for the host's version, the host's interface level, and
// only rows that the host can compile.
#include "frame/registration/registrar.h"

#include <deque>
#include <span>
#include <utility>
#include <vector>

#include "frame/contract/plugin_state.h"
#include "frame/registration/trimming.h"
#include "plugin/frame/good_records.h"

namespace {

using namespace tests;
using zkt::REALclassDefinition;
using zkt::REALmethodDefinition;
using Registration = tests::DeclarationChecks;

TEST_F(Registration, ChecksGlobalMethodsOneByOne) {
  SetVersion(2012.0);
  REALmethodDefinition methods[] = {
      GoodMethod(),
      {nullptr, nullptr, nullptr, 0x4, 0, nullptr},
      {kFunction, nullptr, "A", 0x4, 0, kGoodAttribute},
      {kFunction, nullptr, "B", 0x4, 10001, kGoodAttribute},
      {kFunction, nullptr, "C", 0x4, 2, kBadAttributes},
  };
  zkt::GlobalsModule module;
  const char* const want =
      "Error: A method without declaration.|Error: The method (null) has no function.|"
      "Error: The method A has the wrong attributeCount value: 0|"
      "Error: The method B has the wrong attributeCount value: 10001|"
      "Error: attribute count out of range for .B: 10001.|Error: .C has an attribute without name! Index: 1|"
      "Error: .C has an attribute without value! Name: (null) Index: 1|";
  EXPECT_EQ(LogOf([&] { zkt::RegisterGlobalMethods(methods, module); }), want);
  EXPECT_EQ(host::Host::Current().GlobalMethods().size(), 5u);
  EXPECT_EQ(module.Record(), nullptr);
}

TEST_F(Registration, WarnsAboutIOSOnlyClassesOnOldHosts) {
  const char* const warning = "Warning: iOS only class registered for old Xojo: Thing|";
  const struct {
    double version;
    std::uint32_t flags;
    const char* want;
  } cases[] = {{2020.01, 0x400, warning}, {2020.01, 0x404, ""}, {2020.01, 0x408, ""}, {2020.02, 0x400, ""}};
  for (const auto& c : cases) {
    SetVersion(c.version);
    GoodClass type;
    type.record.flags = c.flags;
    type.methods[0].flags = type.sharedMethods[0].flags = 0x400;
    type.properties[0].flags = type.sharedProperties[0].flags = 0x400;
    EXPECT_EQ(LogOf([&] { zkt::MyREALRegisterClass(&type.record); }), c.want)
        << c.version << ", " << std::hex << c.flags;
  }
}

TEST_F(Registration, RequiresAPartName) {
  GoodClass type;
  zkt::gpartname = nullptr;
  GoodModule module;
  EXPECT_EQ(LogOf([&] {
              zkt::MyREALRegisterClass(&type.record);
              zkt::MyREALRegisterModule(&module.record);
            }),
            "Error: gpartname is nil!? Thing|Error: gpartname is nil!? Thing|");
  EXPECT_TRUE(host::Host::Current().Classes().empty());
  EXPECT_TRUE(host::Host::Current().Modules().empty());
}

TEST_F(Registration, RoundsTheInstanceDataAndFillsInScopes) {
  for (const auto& [size, rounded] : {std::pair{0, 0}, {1, 16}, {17, 32}, {32, 32}}) {
    REALclassDefinition type = {};
    type.version = 15, type.name = "Thing", type.dataSize = static_cast<std::uint64_t>(size);
    zkt::MyREALRegisterClass(&type);
    EXPECT_EQ(type.dataSize, static_cast<std::uint64_t>(rounded));
  }
  GoodModule module;
  zkt::REALenum entry = {};
  module.record.enums = &entry, module.record.enumCount = 1, module.record.flags = 0;
  module.methods[0].flags = 0x4, module.properties[0].flags = 0x24;
  zkt::MyREALRegisterModule(&module.record);
  EXPECT_EQ(module.methods[0].flags, 0x44u);
  EXPECT_EQ(module.properties[0].flags, 0x24u);
  EXPECT_EQ(entry.flags, 0x40u);
  EXPECT_EQ(module.record.flags, 0x4u);
}

TEST_F(Registration, FixesFlagsForTheHostVersion) {
  const struct {
    double version;
    std::uint32_t flags;
    std::uint32_t want;
  } cases[] = {
      {2020.01, 0x308, 0x4},    {2020.02, 0x308, 0x308}, {2020.01, 0x318, 0x14},
      {2020.01, 0x708, 0x708},  {2020.01, 0x30C, 0x4},   {2020.01, 0x200, 0x200},
      {2010.029, 0x40000, 0x4}, {2010.02, 0x40000, 0},   {2024.0, 0x40010, 0x14},
  };
  for (const auto& c : cases) {
    SetVersion(c.version);
    GoodClass type;
    for (std::uint32_t* flags : {&type.record.flags, &type.methods[0].flags, &type.sharedMethods[0].flags,
                                 &type.properties[0].flags, &type.sharedProperties[0].flags})
      *flags = c.flags;
    zkt::FixFlags(&type.record);
    for (const std::uint32_t flags : {type.record.flags, type.methods[0].flags, type.sharedMethods[0].flags,
                                      type.properties[0].flags, type.sharedProperties[0].flags})
      EXPECT_EQ(flags, c.want) << c.version << ", " << std::hex << c.flags;
  }
}

TEST_F(Registration, ChecksAndAdaptsExtensionsOnOldAndNewHosts) {
  // The modules are never destroyed, because the host keeps pointers to the records.
  static auto& modules = *new std::deque<zkt::GlobalsModule>;
  for (const double version : {2012.0, 2024.0}) {
    SCOPED_TRACE(version);
    SetVersion(version);
    REALmethodDefinition methods[] = {{kFunction, kFunction, "Width as Integer", 0x4, 0, nullptr},
                                      {kFunction, nullptr, "Height as Integer", 0x40308, 0, nullptr}};
    REALclassDefinition extension = {};
    extension.version = 15, extension.name = "Graphics", extension.superName = "Super", extension.flags = 0x40308;
    extension.methods = methods, extension.methodCount = std::size(methods);
    zkt::GlobalsModule& module = modules.emplace_back();
    EXPECT_EQ(LogOf([&] { zkt::RegisterClassExtension(&extension, module); }),
              "Error: A class extension can't have super name: Super|"
              "ZKT Debug: Console-safe method in console-unsafe class:  Graphics, Width as Integer|");
    const bool isOld = version < 2013.0;
    EXPECT_EQ(extension.flags, isOld ? 0x4u : 0x30Cu);
    EXPECT_EQ(methods[1].flags, isOld ? 0x4u : 0x30Cu);
    EXPECT_EQ(extension.version, isOld ? 13u : 15u);
    const auto registered = host::Host::Current().ClassExtensions();
    if (isOld) {
      EXPECT_EQ(registered, std::vector{host::ClassExtension{&extension}});
      EXPECT_EQ(module.Record(), nullptr);
      host::Host::Current().registrations.clear();
      continue;
    }
    EXPECT_TRUE(registered.empty());
    ASSERT_NE(module.Record(), nullptr);
    const std::span rows(module.Record()->methods, module.Record()->methodCount);
    ASSERT_EQ(rows.size(), 3u);
    const std::pair<const char*, std::uint32_t> want[] = {
        {"Width(extends ref as Graphics) as Integer", 0x14},
        {"Width(extends ref as Graphics, assigns value as Integer)", 0x14},
        {"Height(extends ref as Graphics) as Integer", 0x31C}};
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_STREQ(rows[i].declaration, want[i].first);
      EXPECT_EQ(rows[i].flags, want[i].second) << rows[i].declaration;
    }
  }
}

TEST_F(Registration, DropsTheMarkedRowsAtTheEndOfATableOnOldHosts) {
  for (const double version : {2019.01, 2019.02}) {
    SCOPED_TRACE(version);
    SetVersion(version);
    const std::uint64_t kept = version < 2019.02 ? 0 : 1;
    GoodClass type;
    GoodModule module;
    std::vector<REALmethodDefinition> globals = {GoodMethod(), GoodMethod()};
    type.methods[0].flags = module.methods[0].flags = globals[1].flags = 0x14 | zkt::kNeedsHost2019r2;
    module.delegates[0].flags = 0x4 | zkt::kNeedsHost2019r2;
    zkt::TrimForHost(&type.record);
    zkt::TrimForHost(&module.record);
    EXPECT_EQ(zkt::TrimForHost(globals).size(), 1 + kept);
    // The declaration checks would report an array with a count of 0.
    EXPECT_EQ(LogOf([&] {
                zkt::MyREALRegisterClass(&type.record);
                zkt::MyREALRegisterModule(&module.record);
              }),
              "");
    EXPECT_EQ(type.record.methodCount, kept);
    EXPECT_EQ(module.record.methodCount, kept);
    EXPECT_EQ(module.record.delegateCount, kept);
    EXPECT_EQ(type.record.methods, kept != 0 ? type.methods.data() : nullptr);
    EXPECT_EQ(module.record.methods, kept != 0 ? module.methods.data() : nullptr);
    EXPECT_EQ(module.record.delegates, kept != 0 ? module.delegates.data() : nullptr);
    const std::uint32_t flags = type.methods[0].flags | module.delegates[0].flags | globals[1].flags;
    EXPECT_EQ(flags, kept != 0 ? 0x14u : 0x14u | zkt::kNeedsHost2019r2);
  }
}

}  // namespace
