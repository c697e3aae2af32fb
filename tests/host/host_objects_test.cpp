// Tests the development host's delegates, dates, and properties as plug-ins use them (through services that are looked
// up by name) and as scripts use them.
#include <stdlib.h>
#include <time.h>

#include <ctime>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "core/dates.h"
#include "core/strings.h"
#include "declarations/value_order.h"
#include "host/script_test.h"

namespace {

using host::Host;
using host::StringRef;
using host::TypeKind;
using tests::Service;

using HostObjects = tests::ScriptTest;

TEST_F(HostObjects, DelegatesCanBePlainFunctions) {
  const auto held = std::make_shared<int>(7);
  const auto difference = +[](const REALobjectStruct*, std::int32_t a, std::int32_t b) { return std::int64_t{a} - b; };
  {
    const host::ObjectRef delegate = host::MakeNativeDelegate(reinterpret_cast<void*>(difference), held);
    EXPECT_EQ(held.use_count(), 2);
    using Invoker = std::int64_t (*)(REALobjectStruct*, std::int32_t, std::int32_t);
    const auto invoker =
        Service<Invoker (*)(REALobjectStruct*, std::int64_t)>("PluginGetDelegateInvoker")(delegate.Get(), 0);
    EXPECT_EQ(invoker(delegate.Get(), 5, 7), -2);
  }
  EXPECT_EQ(held.use_count(), 1);
}

// Sets the process's time zone while in scope.
class TimeZone {
 public:
  explicit TimeZone(const char* name) {
    setenv("TZ", name, 1);
    tzset();
  }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
  ~TimeZone() {
    unsetenv("TZ");
    tzset();
  }
};

TEST_F(HostObjects, DatesKeepFieldsAndSecondsInSync) {
  const TimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  ExpectTable("host/dates.tsv");
}

TEST_F(HostObjects, NewDatesHaveTheCurrentTime) {
  const TimeZone zone("XYZ-3");
  const auto before = static_cast<double>(std::time(nullptr));
  const host::ObjectRef date(Service<REALobjectStruct* (*)(const char*)>("PluginNewInstance")("Date"));
  const host::ObjectRef dateTime(Service<REALobjectStruct* (*)(const char*)>("PluginNewInstance")("DateTime"));
  const auto after = static_cast<double>(std::time(nullptr));
  double local = 0, utc = 0;
  const auto read = Service<bool (*)(REALobjectStruct*, const char*, double*)>("REALGetPropValueDouble");
  EXPECT_TRUE(read(date.Get(), "TotalSeconds", &local));
  EXPECT_TRUE(read(dateTime.Get(), "SecondsFrom1970", &utc));
  EXPECT_TRUE(before <= utc && utc <= after);
  constexpr double kThreeHoursEastSince1904 = 2082844800 + 3 * 3600;
  EXPECT_TRUE(before <= local - kThreeHoursEastSince1904 && local - kThreeHoursEastSince1904 <= after);
}

// Reads a property through a service. The result byte must be 0 or 1. A failure must leave the output variable
// unchanged.
template <class Native>
std::optional<Native> Read(const char* service, REALobjectStruct* object, const char* name, Native untouched) {
  Native place = untouched;
  const auto outcome =
      Service<std::uint8_t (*)(REALobjectStruct*, const char*, Native*)>(service)(object, name, &place);
  EXPECT_LE(outcome, 1);
  if (outcome == 1) return place;
  EXPECT_EQ(place, untouched) << name;
  return std::nullopt;
}

TEST_F(HostObjects, ServicesReadPropertiesOfTheirTypeOnly) {
  const host::ObjectClass flagged = {"Flagged",
                                     nullptr,
                                     {{"Flag", {{TypeKind::kBoolean, false, {}}, std::int64_t{1}}},
                                      {"Tint", {{TypeKind::kColor, false, {}}, std::int64_t{0xFF8000}}}}};
  const host::ObjectRef object(host::MakeObject(&flagged));
  const host::ObjectRef date(host::MakeObject(host::FindClass("date")));
  const host::ObjectRef exception(host::MakeObject(host::FindClass("RuntimeException")));
  const StringRef message(host::MakeString("text"));
  ASSERT_TRUE(Service<bool (*)(REALobjectStruct*, const char*, std::int64_t)>("REALSetPropValueInteger")(date.Get(),
                                                                                                         "Year", 2024));
  ASSERT_TRUE(Service<bool (*)(REALobjectStruct*, const char*, REALstringStruct*)>("REALSetPropValueString")(
      exception.Get(), "Message", message.Get()));

  const auto integer = [](REALobjectStruct* o, const char* n) {
    return Read<std::int64_t>("REALGetPropValueInteger", o, n, 77);
  };
  EXPECT_EQ(integer(date.Get(), "Year"), 2024);
  EXPECT_EQ(integer(date.Get(), "year"), 2024);
  EXPECT_EQ(integer(nullptr, "Year"), std::nullopt);
  EXPECT_EQ(integer(date.Get(), "Nothing"), std::nullopt);
  EXPECT_EQ(integer(date.Get(), "TotalSeconds"), std::nullopt);
  EXPECT_EQ(integer(object.Get(), "Flag"), std::nullopt);
  EXPECT_EQ(Read<double>("REALGetPropValueDouble", date.Get(), "Year", 77), std::nullopt);
  EXPECT_EQ(Read<double>("REALGetPropValueDouble", nullptr, "TotalSeconds", 77), std::nullopt);
  EXPECT_EQ(Read<std::uint8_t>("REALGetPropValueBool", object.Get(), "Flag", 77), 1);
  EXPECT_EQ(Read<std::uint8_t>("REALGetPropValueBool", object.Get(), "Tint", 77), std::nullopt);
  EXPECT_EQ(Read<std::uint32_t>("REALGetPropValueColor", object.Get(), "Tint", 77), 0xFF8000u);
  EXPECT_EQ(Read<std::uint32_t>("REALGetPropValueColor", date.Get(), "Year", 77), std::nullopt);
  const auto text = Read<REALstringStruct*>("REALGetPropValueString", exception.Get(), "Message", nullptr);
  ASSERT_EQ(text, message.Get());
  EXPECT_EQ(message->referenceCount, 3) << "the references of the test, the property and the receiver";
  host::Release(*text);
  EXPECT_EQ(Read<REALstringStruct*>("REALGetPropValueString", exception.Get(), "ErrorNumber", nullptr), std::nullopt);
}

TEST_F(HostObjects, ServicesLoadMethodsByTheirExactDeclaration) {
  const auto load = Service<void* (*)(REALobjectStruct*, const char*)>("REALLoadObjectMethod");
  ASSERT_NE(load, nullptr);
  auto& methods = host::FindClass("RuntimeException")->methods;
  int function = 0;
  methods["Handle() as Ptr"] = &function;
  const host::ObjectRef base(host::MakeObject(host::FindClass("RuntimeException")));
  const host::ObjectRef derived(host::MakeObject(host::FindClass("NilObjectException")));
  const host::ObjectRef other(host::MakeObject(host::FindClass("Object")));
  EXPECT_EQ(load(base.Get(), "Handle() as Ptr"), &function);
  EXPECT_EQ(load(derived.Get(), "Handle() as Ptr"), &function);
  EXPECT_EQ(load(derived.Get(), "Handle() As Ptr"), nullptr);
  EXPECT_EQ(load(other.Get(), "Handle() as Ptr"), nullptr);
  EXPECT_EQ(load(nullptr, "Handle() as Ptr"), nullptr);
  Host::Current().withheld = {"Handle() as Ptr"};
  EXPECT_EQ(load(base.Get(), "Handle() as Ptr"), nullptr);
  Host::Current().withheld.clear();
  methods.clear();
  EXPECT_EQ(load(base.Get(), "Handle() as Ptr"), nullptr);
}

TEST_F(HostObjects, OrdersValuesOfAllKinds) {
  const auto date = [&](const char* className, std::int64_t day) {
    host::ObjectRef object(host::MakeObject(host::FindClass(className)));
    host::SetCalendarFields(object.Get(), {1960, day, day, 0, 0, 0});
    return host::Value{{TypeKind::kObject, false, className}, host::Ref<host::RefCounted>(std::move(object))};
  };
  // Each value sorts before the next.
  const std::vector<std::pair<const char*, host::Value>> ascending = {
      {"Nil", {host::kVariantType, host::Ref<host::RefCounted>()}},
      {"negative", host::MakeValue(-1.5)},
      {"one as Currency", {{TypeKind::kCurrency, false, {}}, std::int64_t{10000}}},
      {"more than one", host::MakeValue(1.00005)},
      {"two", host::MakeValue(std::int64_t{2})},
      {"second largest", host::MakeValue(std::numeric_limits<std::int64_t>::max() - 1)},
      {"largest", host::MakeValue(std::numeric_limits<std::int64_t>::max())},
      {"largest UInt64", {{TypeKind::kUInt64, false, {}}, std::int64_t{-1}}},
      {"empty string", host::MakeValue(std::string_view())},
      {"ab", host::MakeValue(std::string_view("ab"))},
      {"B", host::MakeValue(std::string_view("B"))},
      {"early Date", date("Date", 1)},
      {"late Date", date("Date", 2)},
  };
  const auto boxed = [](const host::Value& value) {
    return value.type == host::kVariantType ? value : host::Boxed(value);
  };
  for (std::size_t i = 0; i < ascending.size(); ++i)
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      const std::int64_t want = i < j ? -1 : i > j ? 1 : 0;
      EXPECT_EQ(host::CompareValues(boxed(ascending[i].second), boxed(ascending[j].second)), want)
          << ascending[i].first << " and " << ascending[j].first;
    }
  for (const char* const className : {"Date", "DateTime"}) {
    EXPECT_EQ(host::CompareValues(date(className, 3), date(className, 4)), -1) << className;
    EXPECT_EQ(host::CompareValues(date(className, 3), date(className, 3)), 0)
        << className << ": two objects for the same moment";
  }
}

}  // namespace
