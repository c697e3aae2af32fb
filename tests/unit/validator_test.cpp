// What the checks of declarations find: each message at least once, by a broken record.
#include <functional>

#include "frame/class_extension.h"
#include "frame/plugin_state.h"
#include "frame/record_checks.h"
#include "frame/registrar.h"
#include "support/host_fixture.h"

namespace {

using zkt::REALclassDefinition;
using zkt::REALmethodDefinition;
using zkt::REALmoduleDefinition;
using zkt::REALproperty;

void* const kFunction = reinterpret_cast<void*>(&testing::UnitTest::GetInstance);
const zkt::REALattribute kGoodAttribute[] = {{"Hidden", ""}};
const zkt::REALattribute kBadAttributes[] = {{"Hidden", ""}, {nullptr, nullptr}};

REALmethodDefinition GoodMethod() { return {kFunction, nullptr, "Run()", 0x14, 0, nullptr}; }

REALproperty GoodProperty() {
  REALproperty property = {};
  property.name = "Size";
  property.type = "Integer";
  property.flags = 0x6;
  property.getter = zkt::kStandardAccessor;
  return property;
}

class Validator : public tests::HostTest {
 protected:
  Validator() {
    zkt::gpartname = "Util";
    zkt::CurrentREALControlVersion = 13;
    host::Host::Current().classes.clear();
    host::Host::Current().modules.clear();
  }

  // The lines that checking and registering writes, each without its line end.
  template <class Action>
  static std::vector<std::string> LinesOf(Action action) {
    tests::CapturedLog log;
    action();
    std::vector<std::string> lines;
    const std::string text = log.Take();
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = text.find('\n', at);
      lines.push_back(text.substr(at, end - at));
      at = end + 1;
    }
    return lines;
  }
};

using Lines = std::vector<std::string>;

// A record with one of everything, all of it right.
template <class Record>
struct Good {
  Record record = {};
  std::vector<REALmethodDefinition> methods = {GoodMethod()};
  std::vector<REALproperty> properties = {GoodProperty()};
  std::vector<zkt::REALconstant> constants = {{"kSize = 1", {}, 0, nullptr}};
  std::vector<zkt::REALdelegate> delegates = {{"DelegateZKT()", 0x4, 0, nullptr}};
  std::vector<zkt::REALevent> events = {{"Opened()", 0, 0, nullptr}};
  std::vector<REALmethodDefinition> sharedMethods = {GoodMethod()};
  std::vector<REALproperty> sharedProperties = {GoodProperty()};

  Good() {
    record.version = 15;
    record.name = "Thing";
    record.flags = 0x4;
    record.methods = methods.data();
    record.methodCount = 1;
    record.properties = properties.data();
    record.propertyCount = 1;
    record.constants = constants.data();
    record.constantCount = 1;
    record.delegates = delegates.data();
    record.delegateCount = 1;
    if constexpr (std::is_same_v<Record, REALclassDefinition>) {
      record.dataSize = 16;
      record.events = events.data();
      record.eventCount = 1;
      record.sharedMethods = sharedMethods.data();
      record.sharedMethodCount = 1;
      record.sharedProperties = sharedProperties.data();
      record.sharedPropertyCount = 1;
    }
  }
};

using GoodClass = Good<REALclassDefinition>;
using GoodModule = Good<REALmoduleDefinition>;

// A mistake in one method, property and so on, and the lines about it; %s stands for what the member belongs to.
struct MethodCase {
  const char* note;
  std::function<void(REALmethodDefinition&)> breakIt;
  Lines want;
};

const MethodCase kMethodCases[] = {
    {"no declaration", [](auto& m) { m.declaration = nullptr; }, {"Error: The method Thing.0 has nil declaration."}},
    {"no function", [](auto& m) { m.function = nullptr; }, {"Error: The method Thing.Run() has nil function."}},
    {"attributes without count",
     [](auto& m) { m.attributes = kGoodAttribute; },
     {"Error: The method Thing.Run() has the wrong attributeCount value: 0"}},
    {"too many attributes",
     [](auto& m) { m.attributeCount = 10001; },
     {"Error: The method Thing.Run() has the wrong attributeCount value: 10001",
      "Error: attribute count out of range for Thing.Run(): 10001."}},
    {"empty attribute",
     [](auto& m) { m.attributes = kBadAttributes, m.attributeCount = 2; },
     {"Error: Thing.Run() has an attribute without name! Index: 1",
      "Error: Thing.Run() has an attribute without value! Name: (null) Index: 1"}},
};

TEST_F(Validator, FindsMistakesInMethods) {
  for (const MethodCase& c : kMethodCases) {
    GoodModule module;
    c.breakIt(module.methods[0]);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterModule(&module.record); }), c.want) << c.note;
    GoodClass type;
    c.breakIt(type.methods[0]);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterClass(&type.record); }), c.want) << c.note;
    GoodClass shared;
    c.breakIt(shared.sharedMethods[0]);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterClass(&shared.record); }), c.want) << c.note;
  }
}

const char* const kBadEntries[] = {"good", nullptr, " spaced"};

struct PropertyCase {
  const char* note;
  std::function<void(REALproperty&)> breakIt;
  Lines want;
};

const PropertyCase kPropertyCases[] = {
    {"no name", [](auto& p) { p.name = nullptr; }, {"Error: The property Thing.0 has nil name."}},
    {"no getter", [](auto& p) { p.getter = nullptr; }, {"Error: The property Thing.Size has nil getter."}},
    {"no type", [](auto& p) { p.type = nullptr; }, {"Error: The property Thing.0 has nil type."}},
    {"double with standard getter",
     [](auto& p) { p.type = "Double", p.setter = kFunction; },
     {"Error: The property Thing.Size needs custom getter.", "Error: The property Thing.Size needs custom setter."}},
    {"unaligned offset",
     [](auto& p) { p.parameter = 6; },
     {"Error: The property Thing.Size has unaligned offset 6.",
      "Error: The property Thing.Size has unaligned offset 6."}},
    {"editor", [](auto& p) { p.editor = kFunction; }, {"Error: The property Thing.Size has editor."}},
    {"enum count without entries",
     [](auto& p) { p.enumCount = 3; },
     {"Error: The property Thing.Size has wrong enumCount: 3", "Error: property enum is nil for Thing.Size: 3."}},
    {"too many enum entries",
     [](auto& p) { p.enumCount = 10001, p.enumEntries = kBadEntries; },
     {"Error: The property Thing.Size has wrong enumCount: 10001",
      "Error: property enum count out of range for Thing.Size: 10001."}},
    {"bad enum entries",
     [](auto& p) { p.enumCount = 3, p.enumEntries = kBadEntries; },
     {"Error: The enum value 1 in property Thing.Size has nil value.",
      "Error: The enum value 2 in property Thing.Size has extra space in value."}},
    {"attributes without count",
     [](auto& p) { p.attributes = kGoodAttribute; },
     {"Error: The property Thing.Size has attributes: 0"}},
    {"empty attribute",
     [](auto& p) { p.attributes = kBadAttributes, p.attributeCount = 2; },
     {"Error: Thing.Size has an attribute without name! Index: 1",
      "Error: Thing.Size has an attribute without value! Name: (null) Index: 1"}},
};

TEST_F(Validator, FindsMistakesInProperties) {
  for (const PropertyCase& c : kPropertyCases) {
    GoodModule module;
    c.breakIt(module.properties[0]);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterModule(&module.record); }), c.want) << c.note;
    GoodClass shared;
    c.breakIt(shared.sharedProperties[0]);
    EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterClass(&shared.record); }), c.want) << c.note;
  }
}

template <class Record>
struct RecordCase {
  const char* note;
  std::function<void(Good<Record>&)> breakIt;
  Lines want;
};

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
    {"2500 constants",
     [](auto& c) {
       c.constants.resize(2500, c.constants[0]);
       c.record.constants = c.constants.data(), c.record.constantCount = 2500;
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
    {"offset beyond the end",
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
    {"1001 methods",
     [](auto& m) {
       m.methods.resize(1001, m.methods[0]);
       m.record.methods = m.methods.data(), m.record.methodCount = 1001;
     },
     {"Error: The module Thing has the wrong methodCount value: 1001"}},
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

TEST_F(Validator, ChecksGlobalMethodsOneByOne) {
  SetVersion(2012.0);
  REALmethodDefinition methods[] = {
      GoodMethod(),
      {nullptr, nullptr, nullptr, 0x4, 0, nullptr},
      {kFunction, nullptr, "A", 0x4, 0, kGoodAttribute},
      {kFunction, nullptr, "B", 0x4, 10001, kGoodAttribute},
      {kFunction, nullptr, "C", 0x4, 2, kBadAttributes},
  };
  host::Host::Current().globalMethods.clear();
  zkt::GlobalsModule module;
  const Lines want = {
      "Error: A method without declaration.",
      "Error: The method (null) has no function.",
      "Error: The method A has the wrong attributeCount value: 0",
      "Error: The method B has the wrong attributeCount value: 10001",
      "Error: attribute count out of range for .B: 10001.",
      "Error: .C has an attribute without name! Index: 1",
      "Error: .C has an attribute without value! Name: (null) Index: 1",
  };
  EXPECT_EQ(LinesOf([&] { zkt::RegisterGlobalMethods(methods, module); }), want);
  EXPECT_EQ(host::Host::Current().globalMethods.size(), 5u);
  EXPECT_EQ(module.Record(), nullptr);
}

TEST_F(Validator, WarnsOfClassesForIOSOnOldHostsAndNeedsAPartName) {
  SetVersion(2020.01);
  GoodClass type;
  type.record.flags = 0x400;
  type.methods[0].flags = type.sharedMethods[0].flags = type.properties[0].flags = 0x400;
  type.sharedProperties[0].flags = 0x400;
  EXPECT_EQ(LinesOf([&] { zkt::MyREALRegisterClass(&type.record); }),
            Lines{"Warning: iOS only class registered for old Xojo: Thing"});
  zkt::gpartname = nullptr;
  host::Host::Current().classes.clear();
  host::Host::Current().modules.clear();
  GoodModule module;
  EXPECT_EQ(LinesOf([&] {
              zkt::MyREALRegisterClass(&type.record);
              zkt::MyREALRegisterModule(&module.record);
            }),
            (Lines{"Error: gpartname is nil!? Thing", "Error: gpartname is nil!? Thing"}));
  EXPECT_TRUE(host::Host::Current().classes.empty());
  EXPECT_TRUE(host::Host::Current().modules.empty());
}

TEST_F(Validator, RoundsTheInstanceDataAndFillsInScopes) {
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

TEST_F(Validator, FixesFlagsForTheHostVersion) {
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

TEST(ClassExtension, GetsTheObjectAsFirstParameter) {
  const std::string longest(1200, 'x');
  const std::pair<const char*, std::string> cases[] = {
      {"Width as Integer", "Width(extends ref as Graphics) as Integer"},
      {"F(a as string, byref b as double) as Boolean",
       "F(extends ref as Graphics, a as string, byref b as double) as Boolean"},
      {"Draw()", "Draw(extends ref as Graphics, )"},
      {"Draw", "Draw(extends ref as Graphics)"},
      {"", "(extends ref as Graphics)"},
      {longest.c_str(), longest.substr(0, 999)},
  };
  for (const auto& [declaration, want] : cases)
    EXPECT_EQ(zkt::AddClassParameter(declaration, "Graphics").get(), want) << declaration;
  EXPECT_STREQ(zkt::AddClassParameter(nullptr, "Graphics").get(), "(extends ref as Graphics)");
}

TEST(ClassExtension, BecomesOneMethodForEachFunctionAndSetter) {
  const std::string unreadable(1200, 'x');
  REALmethodDefinition rows[] = {
      {kFunction, kFunction, "Width as Integer", 0x200, 1, kGoodAttribute},
      {nullptr, kFunction, "Height as Integer", 0x200, 0, nullptr},
      {nullptr, nullptr, "Nothing", 0x200, 0, nullptr},
      {nullptr, kFunction, unreadable.c_str(), 0x200, 0, nullptr},
  };
  REALclassDefinition extension = {};
  extension.name = "Graphics";
  extension.methods = rows;
  extension.methodCount = std::size(rows);
  EXPECT_EQ(zkt::CountExtensionMethods(extension), 4u);
  REALmethodDefinition copies[5] = {};
  tests::CapturedLog log;
  EXPECT_EQ(zkt::CopyMethods(extension, copies, 1), 4u);
  EXPECT_EQ(log.Take(), "ZKT Debug: Error: Keine Klammer in der Deklaration " + unreadable.substr(0, 999) + "\n");
  EXPECT_STREQ(copies[1].declaration, "Width(extends ref as Graphics) as Integer");
  EXPECT_STREQ(copies[2].declaration, "Width(extends ref as Graphics, assigns value as Integer)");
  EXPECT_STREQ(copies[3].declaration, "Height(extends ref as Graphics, assigns value as Integer)");
  EXPECT_EQ(copies[1].flags, 0x210u);
  EXPECT_EQ(copies[2].attributes, kGoodAttribute);
  EXPECT_EQ(copies[2].setter, nullptr);
  for (REALmethodDefinition& copy : copies) delete[] copy.declaration;
}

}  // namespace
