// What the checks of members find: each message at least once, by a broken member.
#include <functional>
#include <type_traits>
#include <vector>

#include "frame/registration/member_checks.h"
#include "frame/registration/registrar.h"
#include "plugin/frame/good_records.h"

namespace {

using tests::GoodClass;
using tests::GoodModule;
using tests::kBadAttributes;
using tests::kFunction;
using tests::kGoodAttribute;
using tests::Lines;
using tests::Validator;
using zkt::REALmethodDefinition;
using zkt::REALproperty;

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
     [](auto& p) { p.parameter = 0x1'0000'0006; },  // the low half counts
     {"Error: The property Thing.Size has unaligned offset 6.",
      "Error: The property Thing.Size has unaligned offset 6."}},
    {"unaligned negative offset",
     [](auto& p) { p.parameter = 0xFFFF'FFFA; },
     {"Error: The property Thing.Size has unaligned offset -6.",
      "Error: The property Thing.Size has unaligned offset -6."}},
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

TEST_F(Validator, CountRuleEndsAtItsLimit) {
  const struct {
    std::uint64_t count;
    const void* array;
    bool breaks;
  } cases[] = {{0, nullptr, false},      {0, kFunction, true},    {1, nullptr, true},   {1, kFunction, false},
               {1000, kFunction, false}, {1001, kFunction, true}, {1000, nullptr, true}};
  for (const auto& c : cases) EXPECT_EQ(zkt::BreaksCountRule(c.count, c.array), c.breaks) << c.count;
}

// The members that are looked at, the last of them broken.
template <class Member>
auto LastBroken(void (*check)(const char*, const Member*, std::uint64_t), Member good,
                std::type_identity_t<const char * Member::*> field) {
  return [=](std::uint64_t count) {
    std::vector<Member> members(count, good);
    members.back().*field = nullptr;
    check("Thing", members.data(), count);
  };
}

TEST_F(Validator, LooksAtTenThousandMembersAndNoMore) {
  REALproperty property = tests::GoodProperty();
  const struct {
    std::function<void(std::uint64_t)> check;
    Lines at10000;
    Lines at10001;
  } cases[] = {
      {LastBroken(zkt::CheckMethods, tests::GoodMethod(), &REALmethodDefinition::declaration),
       {"Error: The method Thing.9999 has nil declaration."},
       {"Error: method count out of range for Thing: 10001."}},
      {LastBroken(zkt::CheckProperties, property, &REALproperty::name),
       {"Error: The property Thing.9999 has nil name."},
       {"Error: property count out of range for Thing: 10001."}},
      {LastBroken(zkt::CheckConstants, {"kSize = 1", {}, 0, nullptr}, &zkt::REALconstant::declaration),
       {"Error: The constant Thing.9999 has nil declaration."},
       {"Error: constant count out of range for Thing: 10001."}},
      {LastBroken(zkt::CheckEvents, {"Opened()", 0, 0, nullptr}, &zkt::REALevent::declaration),
       {"Error: The event Thing.9999 has nil declaration."},
       {"Error: event count out of range for Thing: 10001."}},
      {LastBroken(zkt::CheckDelegates, {"DelegateZKT()", 0x4, 0, nullptr}, &zkt::REALdelegate::declaration),
       {"Error: The delegate Thing.9999 has nil declaration."},
       {"Error: delegate count out of range for Thing: 10001."}},
      {[](std::uint64_t count) {
         std::vector<zkt::REALattribute> attributes(count, kGoodAttribute[0]);
         attributes.back().value = nullptr;
         zkt::CheckAttributes("Thing", "Run()", count, attributes.data());
       },
       {"Error: Thing.Run() has an attribute without value! Name: Hidden Index: 9999"},
       {"Error: attribute count out of range for Thing.Run(): 10001."}},
      {[&](std::uint64_t count) {
         std::vector<const char*> entries(count, "entry");
         entries.back() = nullptr;
         property.enumCount = count, property.enumEntries = entries.data();
         zkt::CheckProperties("Thing", &property, 1);
       },
       {"Error: The property Thing.Size has wrong enumCount: 10000",
        "Error: The enum value 9999 in property Thing.Size has nil value."},
       {"Error: The property Thing.Size has wrong enumCount: 10001",
        "Error: property enum count out of range for Thing.Size: 10001."}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(LinesOf([&] { c.check(10000); }), c.at10000);
    EXPECT_EQ(LinesOf([&] { c.check(10001); }), c.at10001);
  }
}

}  // namespace
