// Declarations without mistakes. Each test adds a mistake and reads the log of the declaration checks.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "frame/contract/plugin_interface.h"
#include "frame/contract/plugin_state.h"
#include "frame/registration/record_rules.h"
#include "support/host_fixture.h"

namespace tests {

inline void* const kFunction = reinterpret_cast<void*>(&testing::UnitTest::GetInstance);
inline const zkt::REALattribute kGoodAttribute[] = {{"Hidden", ""}};
inline const zkt::REALattribute kBadAttributes[] = {{"Hidden", ""}, {nullptr, nullptr}};

inline zkt::REALmethodDefinition GoodMethod() { return {kFunction, nullptr, "Run()", 0x14, 0, nullptr}; }

inline zkt::REALproperty GoodProperty() {
  zkt::REALproperty property = {};
  property.name = "Size";
  property.type = "Integer";
  property.flags = 0x6;
  property.getter = zkt::kStandardAccessor;
  return property;
}

class DeclarationChecks : public HostTest {
 protected:
  DeclarationChecks() {
    zkt::gpartname = "Util";
    zkt::CurrentREALControlVersion = 13;
    host::Host::Current().registrations.clear();
  }
};

// Correct members of every kind.
struct GoodMembers {
  explicit GoodMembers(std::size_t count)
      : methods(count, GoodMethod()),
        properties(count, GoodProperty()),
        constants(count, {"kSize = 1", {}, 0, nullptr}),
        delegates(count, {"DelegateZKT()", 0x4, 0, nullptr}),
        events(count, {"Opened()", 0, 0, nullptr}),
        attributes(count, kGoodAttribute[0]),
        enums(count),
        sharedMethods(methods),
        sharedProperties(properties) {}

  std::vector<zkt::REALmethodDefinition> methods;
  std::vector<zkt::REALproperty> properties;
  std::vector<zkt::REALconstant> constants;
  std::vector<zkt::REALdelegate> delegates;
  std::vector<zkt::REALevent> events;
  std::vector<zkt::REALattribute> attributes;
  std::vector<zkt::REALenum> enums;
  std::vector<zkt::REALmethodDefinition> sharedMethods;
  std::vector<zkt::REALproperty> sharedProperties;
};

// A record without attributes, enumerations, event instances, or structures, and with one member of each other kind.
// Its arrays may contain more members than its counts state.
template <class Record>
struct Good : GoodMembers {
  explicit Good(std::size_t room = 1) : GoodMembers(room) {
    using enum zkt::Part;
    record.version = 15;
    record.name = "Thing";
    record.flags = 0x4;
    Add(kMethods, record.methodCount, record.methods, methods, 1);
    Add(kProperties, record.propertyCount, record.properties, properties, 1);
    Add(kConstants, record.constantCount, record.constants, constants, 1);
    Add(kDelegates, record.delegateCount, record.delegates, delegates, 1);
    Add(kAttributes, record.attributeCount, record.attributes, attributes, 0);
    Add(kEnums, record.enumCount, record.enums, enums, 0);
    if constexpr (std::is_same_v<Record, zkt::REALclassDefinition>) {
      record.dataSize = 16;
      Add(kEvents, record.eventCount, record.events, events, 1);
      Add(kEventInstances, record.eventInstanceCount, record.eventInstances, events, 0);
      Add(kSharedMethods, record.sharedMethodCount, record.sharedMethods, sharedMethods, 1);
      Add(kSharedProperties, record.sharedPropertyCount, record.sharedProperties, sharedProperties, 1);
    } else {
      Add(kStructures, record.structureCount, record.structures, events, 0);
    }
  }
  Good(const Good&) = delete;
  Good& operator=(const Good&) = delete;

  Record record = {};
  // Sets the count of a part, and whether the part has an array.
  std::map<zkt::Part, std::function<void(std::uint64_t count, bool hasArray)>> set;

 private:
  template <class Array, class Member>
  void Add(zkt::Part part, std::uint64_t& count, Array& array, std::vector<Member>& members, std::uint64_t first) {
    set[part] = [&](std::uint64_t newCount, bool hasArray) {
      count = newCount;
      array = hasArray ? members.data() : nullptr;
    };
    set[part](first, first != 0);
  }
};

using GoodClass = Good<zkt::REALclassDefinition>;
using GoodModule = Good<zkt::REALmoduleDefinition>;

}  // namespace tests
