// What the checks of whole records find: each message at least once, by a broken class, module or class extension.
#include <functional>

#include "frame/registration/record_checks.h"
#include "frame/registration/registrar.h"
#include "plugin/frame/good_records.h"

namespace {

using tests::Good;
using tests::GoodClass;
using tests::GoodModule;
using tests::kBadAttributes;
using tests::kFunction;
using tests::kGoodAttribute;
using tests::Lines;
using tests::Validator;
using zkt::REALclassDefinition;
using zkt::REALmoduleDefinition;

template <class Record>
struct RecordCase {
  const char* note;
  std::function<void(Good<Record>&)> breakIt;
  Lines want;
};

void SetConstants(GoodClass& type, std::size_t count) {
  type.constants.resize(count, type.constants[0]);
  type.record.constants = type.constants.data();
  type.record.constantCount = count;
}

const RecordCase<REALclassDefinition> kClassCases[] = {
    {"nothing wrong", [](auto&) {}, {}},
    {"version",
     [](auto& c) { c.record.version = 13; },
     {"Error: The class Thing has the wrong kCurrentREALControlVersion: 13 vs. 15"}},
    {"no name", [](auto& c) { c.record.name = nullptr; }, {"Error: A class without name."}},
    {"system word",
     [](auto& c) { c.record.forSystemUse = 8; },
     {"Error: The class Thing has the wrong forSystemUse value: 8"}},
    {"null arrays",
     [](auto& c) {
       c.record.propertyCount = c.record.methodCount = c.record.eventCount = c.record.constantCount = 2;
       c.record.sharedPropertyCount = c.record.sharedMethodCount = c.record.delegateCount = 2;
       c.record.eventInstanceCount = c.record.attributeCount = c.record.enumCount = 2;
       c.record.properties = c.record.sharedProperties = nullptr;
       c.record.methods = c.record.sharedMethods = nullptr;
       c.record.events = nullptr, c.record.constants = nullptr, c.record.delegates = nullptr;
     },
     {"Error: The class Thing has the wrong propertyCount value: 2",
      "Error: The class Thing has the wrong methodCount value: 2",
      "Error: The class Thing has the wrong eventCount value: 2",
      "Error: The class Thing has the wrong eventInstanceCount value: 2",
      "Error: The class Thing has the wrong constantCount value: 2",
      "Error: The class Thing has the wrong sharedPropertyCounttionCount value: 2",
      "Error: The class Thing has the wrong sharedMethodCount value: 2",
      "Error: The class Thing has the wrong attributeCount value: 2",
      "Error: The class Thing has the wrong delegateCount value: 2",
      "Error: The class Thing has the wrong enumCount value: 2",
      "Error: The class extension Thing has wrong attributes: 2", "Error: method Thing.0 is NULL.",
      "Error: method Thing.1 is NULL.", "Error: Constant Thing.0 is NULL.", "Error: Constant Thing.1 is NULL.",
      "Error: method Thing.0 is NULL.", "Error: method Thing.1 is NULL."}},
    {"arrays without counts",
     [](auto& c) { c.record.methodCount = 0; },
     {"Error: The class Thing has the wrong methodCount value: 0"}},
    {"counts out of range",
     [](auto& c) {
       c.record.propertyCount = c.record.methodCount = c.record.eventCount = c.record.constantCount = 10001;
       c.record.delegateCount = static_cast<std::uint64_t>(-1);
       c.record.methods = nullptr, c.record.properties = nullptr;  // not looked at
     },
     {"Error: The class Thing has the wrong propertyCount value: 10001",
      "Error: The class Thing has the wrong methodCount value: 10001",
      "Error: The class Thing has the wrong eventCount value: 10001",
      "Error: The class Thing has the wrong constantCount value: 10001",
      "Error: The class Thing has the wrong delegateCount value: -1",
      "Error: method count out of range for Thing: 10001.", "Error: property count out of range for Thing: 10001.",
      "Error: constant count out of range for Thing: 10001.", "Error: event count out of range for Thing: 10001.",
      "Error: delegate count out of range for Thing: -1."}},
    {"4000 constants", [](auto& c) { SetConstants(c, 4000); }, {}},
    {"4001 constants",
     [](auto& c) { SetConstants(c, 4001); },
     {"Error: The class Thing has the wrong constantCount value: 4001"}},
    {"subclass of the host's with data", [](auto& c) { c.record.superName = "Canvas"; }, {}},
    {"subclass without data",
     [](auto& c) {
       c.record.superName = "OtherZKT", c.record.dataSize = 0;
       c.properties[0].getter = kFunction;
     },
     {}},
    {"subclass with data",
     [](auto& c) { c.record.superName = "OtherZKT"; },
     {"Warning: The subclass Thing of OtherZKT has data size: 16"}},
    {"class attributes",
     [](auto& c) { c.record.attributes = kBadAttributes, c.record.attributeCount = 2; },
     {"Error: .Thing has an attribute without name! Index: 1",
      "Error: .Thing has an attribute without value! Name: (null) Index: 1"}},
    {"constant",
     [](auto& c) { c.constants[0].declaration = nullptr, c.constants[0].attributeCount = 1001; },
     {"Error: The constant Thing.0 has nil declaration.",
      "Error: The constant Thing.(null) has the wrong attributeCount value: 1001"}},
    {"event",
     [](auto& c) { c.events[0].declaration = nullptr, c.events[0].attributes = kGoodAttribute; },
     {"Error: The event Thing.0 has nil declaration.",
      "Error: The event Thing.(null) has the wrong attributeCount value: 0"}},
    {"delegate",
     [](auto& c) {
       c.delegates[0] = {nullptr, 0, 0, kGoodAttribute};
     },
     {"Error: The delegate Thing.0 has nil declaration.", "Warning: The delegate Thing.(null) has 0 for flags.",
      "Error: The delegate Thing.(null) has the wrong attributeCount value: 0"}},
    {"console-safe members of a class for all targets",
     [](auto& c) {
       c.record.flags = 0x104;
       c.methods[0].flags = c.sharedMethods[0].flags = c.properties[0].flags = c.sharedProperties[0].flags = 0x4;
     },
     {"ZKT Debug: Console-safe method in console-unsafe class:  Thing, Run()",
      "ZKT Debug: Console-safe shared method in console-unsafe class:  Thing, Run()",
      "ZKT Debug: Console-safe property in console-unsafe class:  Thing, Size",
      "ZKT Debug: Console-safe shared property in console-unsafe class:  Thing, Size"}},
    {"the debug switch may be console-safe",
     [](auto& c) {
       c.record.flags = 0x104;
       c.methods[0].flags = c.sharedMethods[0].flags = c.properties[0].flags = 0x104;
       c.sharedProperties[0].name = "Debugging";
     },
     {}},
    {"offset at the end", [](auto& c) { c.properties[0].parameter = 12; }, {}},
    {"the low half of an offset counts", [](auto& c) { c.properties[0].parameter = 0x1'0000'000C; }, {}},
    {"negative offset", [](auto& c) { c.properties[0].parameter = 0xFFFF'FFFC; }, {}},
    {"offset beyond the end, of a standard getter",
     [](auto& c) { c.properties[0].parameter = 16; },
     {"Error: Offset for variable too big: Thing.Size 16 16"}},
    {"offset beyond the end, of a standard setter",
     [](auto& c) {
       c.properties[0].parameter = 16, c.properties[0].getter = kFunction,
       c.properties[0].setter = zkt::kStandardAccessor;
     },
     {"Error: Offset for variable too big: Thing.Size 16 16"}},
};

const RecordCase<REALmoduleDefinition> kModuleCases[] = {
    {"nothing wrong", [](auto&) {}, {}},
    {"version of the running host", [](auto& m) { m.record.version = 13; }, {}},
    {"version",
     [](auto& m) { m.record.version = 12; },
     {"Error: The module Thing has the wrong kCurrentREALControlVersion: 12 vs. 15"}},
    {"no name", [](auto& m) { m.record.name = nullptr; }, {"Error: A module without name."}},
    {"null arrays",
     [](auto& m) {
       m.record.propertyCount = m.record.methodCount = m.record.enumCount = 3;
       m.record.structureCount = m.record.attributeCount = m.record.delegateCount = 3;
       m.record.properties = nullptr, m.record.methods = nullptr, m.record.delegates = nullptr;
     },
     {"Error: The module Thing has the wrong propertyCount value: 3",
      "Error: The module Thing has the wrong methodCount value: 3",
      "Error: The module Thing has the wrong structureCount value: 3",
      "Error: The module Thing has the wrong enumCount value: 3",
      "Error: The module Thing has the wrong attributeCount value: 3",
      "Error: The module Thing has the wrong delegateCount value: 3", "Error: method Thing.0 is NULL.",
      "Error: method Thing.1 is NULL.", "Error: method Thing.2 is NULL.",
      "ZKT Debug: Error: method array is nil while count is not zero!",
      "ZKT Debug: Error: property array is nil while count is not zero!",
      "ZKT Debug: Error: enum array is nil while count is not zero!"}},
    {"1000 methods",
     [](auto& m) {
       m.methods.resize(1000, m.methods[0]);
       m.record.methods = m.methods.data(), m.record.methodCount = 1000;
     },
     {}},
    {"1001 methods",
     [](auto& m) {
       m.methods.resize(1001, m.methods[0]);
       m.record.methods = m.methods.data(), m.record.methodCount = 1001;
     },
     {"Error: The module Thing has the wrong methodCount value: 1001"}},
    {"constant",
     [](auto& m) { m.constants[0].declaration = nullptr; },
     {"Error: The constant Thing.0 has nil declaration."}},
    {"delegate",
     [](auto& m) { m.delegates[0].flags = 0; },
     {"Warning: The delegate Thing.DelegateZKT() has 0 for flags."}},
    {"console-safe members of a module for all targets",
     [](auto& m) { m.record.flags = 0x104, m.methods[0].flags = m.properties[0].flags = 0x4; },
     {"ZKT Debug: Console-safe method in console-unsafe module:  Thing, Run()",
      "ZKT Debug: Console-safe property in console-unsafe module:  Thing, Size"}},
};

TEST_F(Validator, FindsMistakesInClassesAndRegistersThemAllTheSame) {
  for (const auto& c : kClassCases) {
    GoodClass type;
    c.breakIt(type);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterClass(&type.record); }), c.want) << c.note;
    EXPECT_EQ(host::Host::Current().classes.back(), &type.record) << c.note;
    EXPECT_EQ(type.record.version, 13u) << c.note;
  }
}

TEST_F(Validator, FindsMistakesInModulesAndRegistersThemAllTheSame) {
  for (const auto& c : kModuleCases) {
    GoodModule module;
    c.breakIt(module);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterModule(&module.record); }), c.want) << c.note;
    EXPECT_EQ(host::Host::Current().modules.back(), &module.record) << c.note;
  }
}

TEST_F(Validator, FindsWhatAnExtensionCannotHave) {
  GoodClass extension;
  REALclassDefinition& record = extension.record;
  record.version = 14, record.superName = "Super", record.forSystemUse = 1, record.name = "thing";
  record.eventInstances = kFunction, record.enums = nullptr, record.enumCount = 2, record.attributeCount = 2;
  record.methods = nullptr, record.properties = nullptr;
  const Lines want = {
      "Error: The class extension thing has the wrong kCurrentREALControlVersion: 14 vs. 15",
      "Error: A class extension can't have super name: Super",
      "Error: The class extension thing has the dataSize value: 16",
      "Error: The class extension thing has the wrong forSystemUse value: 1",
      "Error: The class extension thing has the wrong propertyCount value: 1",
      "Error: The class extension thing has the wrong methodCount value: 1",
      "Error: The class extension thing has events: 1",
      "Error: The class extension thing has event instances: 0",
      "Error: The class extension thing has constants: 1",
      "Error: The class extension thing has shared Properties: 1",
      "Error: The class extension thing has shared Methods: 1",
      "Error: The class extension thing has delegates 1",
      "Error: The class extension thing has enums: 2",
      "Error: The class extension thing has wrong attributes: 2",
      "Error: method thing.0 is NULL.",
      "Warning: The class extension thing has the propertyCount value: 1",
      "Warning: The class extension thing has the constantCount value: 1",
      "Warning: The class extension thing has the eventCount value: 1",
      "Warning: The class extension thing has the sharedProperties value: 1",
      "Warning: The class extension thing has the sharedMethods value: 1",
      "Error: The class extension name thing does not start with capital letter.",
  };
  EXPECT_EQ(LinesOf([&] { zkt::CheckClassExtension(record); }), want);
  REALclassDefinition nameless = {};
  nameless.version = 15;
  EXPECT_EQ(LinesOf([&] { zkt::CheckClassExtension(nameless); }), Lines{"Error: A class extension without name."});
}

TEST_F(Validator, LooksAtTheMembersOfAnExtension) {
  GoodClass extension;
  extension.record.dataSize = 0;
  extension.methods[0].declaration = nullptr;
  extension.properties[0].name = nullptr;
  extension.constants[0].declaration = nullptr;
  extension.events[0].declaration = nullptr;
  extension.sharedMethods[0].function = nullptr;
  extension.sharedProperties[0].getter = nullptr;
  extension.delegates[0].flags = 0;
  const Lines want = {
      "Error: The class extension Thing has events: 1",
      "Error: The class extension Thing has constants: 1",
      "Error: The class extension Thing has shared Properties: 1",
      "Error: The class extension Thing has shared Methods: 1",
      "Error: The class extension Thing has delegates 1",
      "Error: The method Thing.0 has nil declaration.",
      "Error: The property Thing.0 has nil name.",
      "Error: The constant Thing.0 has nil declaration.",
      "Error: The event Thing.0 has nil declaration.",
      "Error: The method Thing.Run() has nil function.",
      "Error: The property Thing.Size has nil getter.",
      "Warning: The delegate Thing.DelegateZKT() has 0 for flags.",
      "Warning: The class extension Thing has the propertyCount value: 1",
      "Warning: The class extension Thing has the constantCount value: 1",
      "Warning: The class extension Thing has the eventCount value: 1",
      "Warning: The class extension Thing has the sharedProperties value: 1",
      "Warning: The class extension Thing has the sharedMethods value: 1",
  };
  EXPECT_EQ(LinesOf([&] { zkt::CheckClassExtension(extension.record); }), want);
}

}  // namespace
