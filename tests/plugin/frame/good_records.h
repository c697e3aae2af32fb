// Declarations without a mistake, for tests that put one in and read what the checks log.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "frame/contract/plugin_interface.h"
#include "frame/contract/plugin_state.h"
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

using Lines = std::vector<std::string>;

class Validator : public HostTest {
 protected:
  Validator() {
    zkt::gpartname = "Util";
    zkt::CurrentREALControlVersion = 13;
    host::Host::Current().classes.clear();
    host::Host::Current().modules.clear();
    host::Host::Current().classExtensions.clear();
    host::Host::Current().globalMethods.clear();
  }

  // The lines that checking and registering writes, each without its line end.
  template <class Action>
  static Lines LinesOf(Action action) {
    CapturedLog log;
    action();
    Lines lines;
    const std::string text = log.Take();
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = text.find('\n', at);
      lines.push_back(text.substr(at, end - at));
      at = end + 1;
    }
    return lines;
  }
};

// A record with one of everything, all of it right.
template <class Record>
struct Good {
  Record record = {};
  std::vector<zkt::REALmethodDefinition> methods = {GoodMethod()};
  std::vector<zkt::REALproperty> properties = {GoodProperty()};
  std::vector<zkt::REALconstant> constants = {{"kSize = 1", {}, 0, nullptr}};
  std::vector<zkt::REALdelegate> delegates = {{"DelegateZKT()", 0x4, 0, nullptr}};
  std::vector<zkt::REALevent> events = {{"Opened()", 0, 0, nullptr}};
  std::vector<zkt::REALmethodDefinition> sharedMethods = {GoodMethod()};
  std::vector<zkt::REALproperty> sharedProperties = {GoodProperty()};

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
    if constexpr (std::is_same_v<Record, zkt::REALclassDefinition>) {
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

using GoodClass = Good<zkt::REALclassDefinition>;
using GoodModule = Good<zkt::REALmoduleDefinition>;

}  // namespace tests
