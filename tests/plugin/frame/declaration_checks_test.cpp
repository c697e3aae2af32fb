// Tests the log lines of the declaration checks. The expected lines about counts come from the rule table. The order of
// all lines, the lines about members, and the lines of individual checks are written out here.
#include <algorithm>
#include <utility>

#include "frame/registration/record_checks.h"
#include "frame/registration/registrar.h"
#include "plugin/frame/good_records.h"

namespace {

using namespace tests;
using enum zkt::RecordKind;
using enum zkt::Defect;
using enum zkt::Part;

class DeclarationChecks : public tests::DeclarationChecks {
 protected:
  template <class Record>
  static std::string LogAbout(tests::Good<Record>& good, zkt::RecordKind kind = kClass) {
    return LogOf([&] {
      if constexpr (std::is_same_v<Record, zkt::REALmoduleDefinition>)
        zkt::MyREALRegisterModule(&good.record);
      else
        kind == kExtension ? zkt::CheckClassExtension(good.record) : zkt::MyREALRegisterClass(&good.record);
    });
  }

  // Tries each kind of count for each part of a record, with and without an array. In the log, warnings follow the
  // lines about members.
  template <class Record>
  static void ExpectCountsToBeChecked(zkt::RecordKind kind) {
    tests::Good<Record> good(4001);
    for (const auto& [part, set] : good.set) set(part == kMethods, part == kMethods);
    if constexpr (std::is_same_v<Record, zkt::REALclassDefinition>) good.record.dataSize = kind == kClass ? 16 : 0;
    const Record record = good.record;
    for (const auto& [part, set] : good.set) {
      const std::uint64_t limit = kind == kClass && part == kConstants ? 4000 : 1000;
      const std::pair<std::uint64_t, bool> states[] = {{0, false}, {0, true},     {1, false},
                                                       {1, true},  {limit, true}, {limit + 1, true}};
      for (const auto& [count, hasArray] : states) {
        good.record = record;
        set(count, hasArray);
        std::string errors, warnings;
        for (const zkt::RecordRule& rule : zkt::kRecordRules) {
          if (rule.kind != kind || rule.part != part) continue;
          if (rule.defect == kContradiction && (count == 0) != hasArray && count <= limit) continue;
          if (rule.defect != kContradiction && count == 0 && !(rule.defect == kNotAllowed && hasArray)) continue;
          std::string text = rule.text;
          text.replace(text.find("%s"), 2, "Thing").replace(text.find("%d"), 2, std::to_string(count));
          (rule.defect == kPointless ? warnings : errors) += text + "|";
        }
        if (count == 1 && !hasArray) errors += LogAboutMissing(part, kind);
        EXPECT_EQ(LogAbout(good, kind), errors + warnings) << "part " << static_cast<int>(part);
      }
    }
  }
  static std::string LogAboutMissing(zkt::Part part, zkt::RecordKind kind) {
    std::string log;
    if (part == kMethods || part == kSharedMethods) log = "Error: method Thing.0 is NULL.|";
    if (part == kConstants) log = "Error: Constant Thing.0 is NULL.|";
    for (const auto& [each, noun] : {std::pair(kMethods, "method"), {kProperties, "property"}, {kEnums, "enum"}})
      if (kind == kModule && part == each)
        log += std::string("ZKT Debug: Error: ") + noun + " array is nil while count is not zero!|";
    return log;
  }

  // Corrupts every part: sets each count to a different number, which identifies the count's line in the log, and makes
  // one mistake in each array.
  template <class Record>
  static void CorruptEverything(tests::Good<Record>& good) {
    good.record.version = 12;
    if constexpr (std::is_same_v<Record, zkt::REALclassDefinition>)
      good.record.superName = "AZKT", good.record.dataSize = 32, good.record.forSystemUse = 8;
    for (const auto& [part, set] : good.set) set(5000 + static_cast<std::uint64_t>(part), true);
    good.methods[1].declaration = good.sharedMethods[2].declaration = nullptr;
    good.properties[1].name = good.sharedProperties[2].name = nullptr;
    good.constants[1].declaration = good.events[1].declaration = good.delegates[1].declaration = nullptr;
    good.attributes[1].value = nullptr;
  }
};

TEST_F(DeclarationChecks, CompareCountsAndArrays) {
  ExpectCountsToBeChecked<zkt::REALclassDefinition>(kClass);
  ExpectCountsToBeChecked<zkt::REALmoduleDefinition>(kModule);
  ExpectCountsToBeChecked<zkt::REALclassDefinition>(kExtension);
}

// Words that many lines share are removed before the comparison.
TEST_F(DeclarationChecks, LogInAFixedOrder) {
  GoodClass type(5011), extension(5011);
  GoodModule module(5011);
  CorruptEverything(type), CorruptEverything(module), CorruptEverything(extension);
  type.record.name = module.record.name = nullptr, extension.record.name = "thing";
  const auto shortened = [](std::string log) {
    for (const std::string words : {"Error: The class (null) has the wrong ", "Error: The module (null) has the wrong ",
                                    "Error: The class extension thing has ", "Error: The ", "The class extension ",
                                    " has nil declaration.", " has nil name.", " value"})
      for (std::size_t at; (at = log.find(words)) != log.npos;) log.erase(at, words.size());
    return log;
  };
  EXPECT_EQ(shortened(LogAbout(type)),
            "kCurrentREALControlVersion: 12 vs. 15|Error: A class without name.|forSystemUse: 8|propertyCount: 5000|"
            "methodCount: 5001|eventCount: 5002|eventInstanceCount: 5003|constantCount: 5004|"
            "sharedPropertyCounttionCount: 5005|sharedMethodCount: 5006|attributeCount: 5007|delegateCount: 5008|"
            "enumCount: 5009|class extension (null) has wrong attributes: 5007|"
            "Warning: The subclass (null) of AZKT has data size: 32|"
            "Error: .(null) has an attribute without! Name: Hidden Index: 1|method (null).1|property (null).1|"
            "constant (null).1|event (null).1|delegate (null).1|method (null).2|property (null).2|");
  EXPECT_EQ(shortened(LogAbout(module)),
            "kCurrentREALControlVersion: 12 vs. 15|Error: A module without name.|propertyCount: 5000|"
            "methodCount: 5001|structureCount: 5010|enumCount: 5009|attributeCount: 5007|delegateCount: 5008|"
            "method (null).1|property (null).1|constant (null).1|delegate (null).1|");
  EXPECT_EQ(shortened(LogAbout(extension, kExtension)),
            "the wrong kCurrentREALControlVersion: 12 vs. 15|Error: A class extension can't have super name: AZKT|"
            "the dataSize: 32|the wrong forSystemUse: 8|the wrong propertyCount: 5000|the wrong methodCount: 5001|"
            "events: 5002|event instances: 5003|constants: 5004|shared Properties: 5005|shared Methods: 5006|"
            "delegates 5008|enums: 5009|wrong attributes: 5007|method thing.1|property thing.1|constant thing.1|"
            "event thing.1|method thing.2|property thing.2|delegate thing.1|Warning: thing has the propertyCount: 5000|"
            "Warning: thing has the constantCount: 5004|Warning: thing has the eventCount: 5002|"
            "Warning: thing has the sharedProperties: 5005|Warning: thing has the sharedMethods: 5006|"
            "class extension name thing does not start with capital letter.|");
  EXPECT_TRUE(host::Host::Current().Classes().back() == &type.record && type.record.version == 13);
  EXPECT_TRUE(host::Host::Current().Modules().back() == &module.record && module.record.version == 13);
  const zkt::REALclassDefinition nameless = {.version = 15};
  EXPECT_EQ(LogOf([&] { zkt::CheckClassExtension(nameless); }), "Error: A class extension without name.|");
}

TEST_F(DeclarationChecks, StopAfterTenThousandMembers) {
  GoodClass type(10001), tooLarge(10001);
  type.methods[9999].declaration = nullptr;
  type.set[kMethods](10000, true);
  EXPECT_EQ(LogAbout(type),
            "Error: The class Thing has the wrong methodCount value: 10000|"
            "Error: The method Thing.9999 has nil declaration.|");
  for (const zkt::Part part : {kMethods, kProperties, kConstants, kEvents, kDelegates, kAttributes})
    tooLarge.set[part](10001, true);
  const std::string log = LogAbout(tooLarge);
  EXPECT_EQ(log.substr(log.find("Error: attribute count")),
            "Error: attribute count out of range for .Thing: 10001.|Error: method count out of range for Thing: 10001.|"
            "Error: property count out of range for Thing: 10001.|Error: constant count out of range for Thing: 10001.|"
            "Error: event count out of range for Thing: 10001.|Error: delegate count out of range for Thing: 10001.|");
}

const char* const kEntries[] = {"good", nullptr, " spaced"};

const struct {
  void (*spoil)(GoodMembers&);
  const char* want;
} kMemberCases[] = {
    {[](auto& m) { m.methods[0].attributes = kGoodAttribute; },
     "Error: The method Thing.Run() has the wrong attributeCount value: 0|"},
    {[](auto& m) { m.methods[0].attributes = kBadAttributes, m.methods[0].attributeCount = 2; },
     "Error: Thing.Run() has an attribute without name! Index: 1|"
     "Error: Thing.Run() has an attribute without value! Name: (null) Index: 1|"},
    {[](auto& m) { m.methods[0] = {nullptr, nullptr, nullptr, 0x14, 10001, kGoodAttribute}; },
     "Error: The method Thing.0 has nil declaration.|Error: The method Thing.(null) has nil function.|"
     "Error: The method Thing.(null) has the wrong attributeCount value: 10001|"
     "Error: attribute count out of range for Thing.(null): 10001.|"},
    {[](auto& m) { m.properties[0].name = m.properties[0].type = nullptr, m.properties[0].getter = nullptr; },
     "Error: The property Thing.0 has nil name.|Error: The property Thing.(null) has nil getter.|"
     "Error: The property Thing.0 has nil type.|"},
    {[](auto& m) { m.properties[0].type = "Double", m.properties[0].setter = kFunction; },
     "Error: The property Thing.Size needs custom getter.|Error: The property Thing.Size needs custom setter.|"},
    {[](auto& m) { m.properties[0].parameter = 0x1'0000'0006; },  // only the low half is used
     "Error: The property Thing.Size has unaligned offset 6.|Error: The property Thing.Size has unaligned offset 6.|"},
    {[](auto& m) { m.properties[0].parameter = 0xFFFF'FFFA, m.properties[0].editor = kFunction; },
     "Error: The property Thing.Size has unaligned offset -6.|Error: The property Thing.Size has unaligned offset -6.|"
     "Error: The property Thing.Size has editor.|"},
    {[](auto& m) { m.properties[0].enumCount = 3, m.properties[0].attributes = kGoodAttribute; },
     "Error: The property Thing.Size has wrong enumCount: 3|Error: The property Thing.Size has attributes: 0|"
     "Error: property enum is nil for Thing.Size: 3.|"},
    {[](auto& m) { m.properties[0].enumCount = 10001, m.properties[0].enumEntries = kEntries; },
     "Error: The property Thing.Size has wrong enumCount: 10001|"
     "Error: property enum count out of range for Thing.Size: 10001.|"},
    {[](auto& m) {
       m.properties[0].enumCount = 3, m.properties[0].enumEntries = kEntries;
       m.properties[0].attributeCount = 2, m.properties[0].attributes = kBadAttributes;
     },
     "Error: The enum value 1 in property Thing.Size has nil value.|"
     "Error: The enum value 2 in property Thing.Size has extra space in value.|"
     "Error: Thing.Size has an attribute without name! Index: 1|"
     "Error: Thing.Size has an attribute without value! Name: (null) Index: 1|"},
    {[](auto& m) {
       m.constants[0] = {nullptr, {}, 1001, nullptr};
     },
     "Error: The constant Thing.0 has nil declaration.|"
     "Error: The constant Thing.(null) has the wrong attributeCount value: 1001|"},
    {[](auto& m) {
       m.events[0] = {nullptr, 0, 0, kGoodAttribute};
     },
     "Error: The event Thing.0 has nil declaration.|"
     "Error: The event Thing.(null) has the wrong attributeCount value: 0|"},
    {[](auto& m) {
       m.delegates[0] = {nullptr, 0, 0, kGoodAttribute};
     },
     "Error: The delegate Thing.0 has nil declaration.|Warning: The delegate Thing.(null) has 0 for flags.|"
     "Error: The delegate Thing.(null) has the wrong attributeCount value: 0|"},
};

TEST_F(DeclarationChecks, FindMistakesInMembers) {
  for (const auto& c : kMemberCases) {
    GoodClass type, shared;
    GoodModule module;
    c.spoil(type), c.spoil(shared), c.spoil(module);
    std::swap(shared.methods[0], shared.sharedMethods[0]);
    std::swap(shared.properties[0], shared.sharedProperties[0]);
    EXPECT_EQ(LogAbout(type), c.want);
    EXPECT_EQ(LogAbout(shared), c.want);
    EXPECT_EQ(LogAbout(module), std::string_view(c.want).find("event") != std::string::npos ? "" : c.want);
  }
}

const struct {
  void (*spoil)(GoodClass&);
  const char* want;
} kClassCases[] = {
    {[](auto& c) { c.record.version = 13; },  // the host's interface level
     "Error: The class Thing has the wrong kCurrentREALControlVersion: 13 vs. 15|"},
    {[](auto& c) { c.record.superName = "Canvas"; }, ""},  // a host class as the superclass
    {[](auto& c) { c.record.superName = "OtherZKT", c.record.dataSize = 0, c.properties[0].getter = kFunction; }, ""},
    {[](auto& c) {
       c.record.flags = 0x104;
       c.methods[0].flags = c.sharedMethods[0].flags = c.properties[0].flags = c.sharedProperties[0].flags = 0x4;
     },
     "ZKT Debug: Console-safe method in console-unsafe class:  Thing, Run()|"
     "ZKT Debug: Console-safe shared method in console-unsafe class:  Thing, Run()|"
     "ZKT Debug: Console-safe property in console-unsafe class:  Thing, Size|"
     "ZKT Debug: Console-safe shared property in console-unsafe class:  Thing, Size|"},
    {[](auto& c) {  // the debug switch may be console-safe
       c.record.flags = c.methods[0].flags = c.sharedMethods[0].flags = c.properties[0].flags = 0x104;
       c.sharedProperties[0].name = "Debugging";
     },
     ""},
    {[](auto& c) { c.properties[0].parameter = 0x1'0000'000C; }, ""},  // only the low half is used
    {[](auto& c) { c.properties[0].parameter = 0xFFFF'FFFC; }, ""},
    {[](auto& c) { c.properties[0].parameter = 16; }, "Error: Offset for variable too big: Thing.Size 16 16|"},
    {[](auto& c) {
       c.properties[0].parameter = 16, c.properties[0].getter = kFunction;
       c.properties[0].setter = zkt::kStandardAccessor;
     },
     "Error: Offset for variable too big: Thing.Size 16 16|"},
};

TEST_F(DeclarationChecks, FindMistakesInClasses) {
  for (const auto& c : kClassCases) {
    GoodClass type;
    c.spoil(type);
    EXPECT_EQ(LogAbout(type), c.want);
  }
}

TEST_F(DeclarationChecks, FindMistakesInModules) {
  GoodModule ofRunningHost, module;
  ofRunningHost.record.version = 13;
  EXPECT_EQ(LogAbout(ofRunningHost), "");
  module.record.flags = 0x104, module.methods[0].flags = module.properties[0].flags = 0x4;
  EXPECT_EQ(LogAbout(module),
            "ZKT Debug: Console-safe method in console-unsafe module:  Thing, Run()|"
            "ZKT Debug: Console-safe property in console-unsafe module:  Thing, Size|");
}

}  // namespace
