// The development host's arrays, dates, string order and delegates: as a plug-in meets them, through services found by
// name, and as scripts do.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <cstring>
#include <ctime>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/arrays.h"
#include "core/host.h"
#include "core/strings.h"
#include "language/calls.h"
#include "language/catalogue.h"
#include "language/errors.h"
#include "language/interpreter.h"
#include "language/ready_functions.h"

namespace {

using host::Array;
using host::ArrayLayoutFault;
using host::ArrayRef;
using host::Basic;
using host::Host;
using host::StringRef;

template <class Function>
Function Service(const char* name) {
  return reinterpret_cast<Function>(host::Resolve(name));
}

ArrayRef MakeArray(Basic basic, std::int64_t upperBound = -1) {
  return ArrayRef(host::MakeArray({basic, false, {}}, upperBound));
}

class HostArrays : public testing::Test {
 protected:
  ~HostArrays() override {
    Host::Current().version = 2024.03;
    Host::Current().arrayLayoutFault = ArrayLayoutFault::kNone;
    const host::Ledger ledger = host::TakeLedger();
    EXPECT_TRUE(ledger.IsBalanced()) << host::DescribeLedger(ledger);
  }
};

// Inserts `first` and `second` in front of it, often enough that the array has to grow, and reads the memory.
template <class Element>
void CheckInserter(const char* service, Basic basic, Element first, Element second) {
  using Inserter = void (*)(void*, std::int64_t, Element);
  const ArrayRef array = MakeArray(basic);
  const Inserter insert = Service<Inserter (*)(void*)>(service)(array.Get());
  ASSERT_NE(insert, nullptr) << service;
  insert(array.Get(), 0, first);
  for (int i = 0; i < 20; ++i) insert(array.Get(), 0, second);
  insert(array.Get(), 99, first);
  insert(array.Get(), -1, first);
  ASSERT_EQ(host::UpperBound(array.Get()), 20) << service << ": nothing goes in out of range";
  const auto* const elements = reinterpret_cast<const Element*>(array->data);
  EXPECT_EQ(elements[20], first) << service;
  for (int i = 0; i < 20; ++i) EXPECT_EQ(elements[i], second) << service << " at " << i;
}

TEST_F(HostArrays, TakeElementsOfEveryTypeInTheirWidth) {
  constexpr auto kLeast32 = std::numeric_limits<std::int32_t>::min();
  constexpr auto kLeast64 = std::numeric_limits<std::int64_t>::min();
  CheckInserter<std::uint8_t>("PluginBooleanArrayInsertProc", Basic::kBoolean, 1, 0);
  CheckInserter<std::uint32_t>("PluginColorArrayInsertProc", Basic::kColor, 0xFF8000, 1);
  CheckInserter<std::int64_t>("PluginCurrencyArrayInsertProc", Basic::kCurrency, kLeast64, 12345);
  CheckInserter<double>("PluginDoubleArrayInsertProc", Basic::kDouble, -0.1, 1e300);
  CheckInserter<float>("PluginSingleArrayInsertProc", Basic::kSingle, -0.1F, 1e30F);
  CheckInserter<std::int32_t>("PluginInt32ArrayInsertProc", Basic::kInt32, kLeast32, -1);
  CheckInserter<std::int64_t>("PluginInt64ArrayInsertProc", Basic::kInt64, kLeast64, -1);
  CheckInserter<std::uint32_t>("PluginUInt32ArrayInsertProc", Basic::kUInt32, 0xFFFFFFFF, 1);
  CheckInserter<std::uint64_t>("PluginUInt64ArrayInsertProc", Basic::kUInt64, ~std::uint64_t{0}, 1);
  CheckInserter<std::int64_t>("PluginIntegerArrayInsertProc", Basic::kInt64, kLeast64, -1);
  CheckInserter<void*>("PluginIntegerArrayInsertProc", Basic::kPtr, &Host::Current(), nullptr);
}

TEST_F(HostArrays, TakeAReferenceOfTheirOwn) {
  const StringRef text(host::MakeString("text"));
  CheckInserter<REALstringStruct*>("PluginStringArrayInsertProc", Basic::kString, text.Get(), nullptr);
  EXPECT_EQ(text->references, 1) << "the array has dropped its own";
  const host::ObjectRef object(host::MakeObject(host::FindClass("RuntimeException")));
  for (const Basic basic : {Basic::kObject, Basic::kVariant})
    CheckInserter<REALobjectStruct*>("PluginObjectArrayInsertProc", basic, nullptr, object.Get());
  EXPECT_EQ(object->references, 1);
}

TEST_F(HostArrays, HandOutNoProcedureForOtherElements) {
  const ArrayRef bytes = MakeArray(Basic::kBoolean, 3);
  for (const char* const service :
       {"PluginColorArrayInsertProc", "PluginIntegerArrayInsertProc", "PluginIntegerArrayGetProc",
        "PluginIntegerArraySetProc", "PluginStringArrayInsertProc", "PluginObjectArrayInsertProc"}) {
    EXPECT_EQ(Service<void* (*)(Array*)>(service)(bytes.Get()), nullptr) << service;
    EXPECT_EQ(Service<void* (*)(Array*)>(service)(nullptr), nullptr) << service;
  }
}

TEST_F(HostArrays, ReadAndWriteIntegersAndStrings) {
  const ArrayRef numbers(Service<Array* (*)(std::int64_t, std::int64_t)>("RuntimeArrayCreateSingleDimBoundedArray")(
      zkt::kArrayOfInteger, 9));
  const auto write = Service<void (*(*)(Array*))(Array*, std::int64_t, std::int64_t)>("PluginIntegerArraySetProc");
  const auto read = Service<std::int64_t (*(*)(Array*))(Array*, std::int64_t)>("PluginIntegerArrayGetProc");
  for (const std::int64_t index : {-1, 0, 9, 10}) write(numbers.Get())(numbers.Get(), index + 1000, index);
  const std::pair<std::int64_t, std::int64_t> want[] = {{-1, 0}, {0, 1000}, {1, 0}, {9, 1009}, {10, 0}};
  for (const auto& [index, value] : want) EXPECT_EQ(read(numbers.Get())(numbers.Get(), index), value) << index;

  const ArrayRef texts = MakeArray(Basic::kString, 1);
  host::SetElement(texts.Get(), 1, host::MakeValue(std::string_view("last")));
  const auto readString = Service<REALstringStruct* (*)(Array*, std::int64_t)>("RuntimeDirectReadStringArray");
  for (const std::int64_t index : {-1, 0, 2}) EXPECT_EQ(readString(texts.Get(), index), nullptr) << index;
  const StringRef last(readString(texts.Get(), 1));
  EXPECT_EQ(last->View(), "last");
  EXPECT_EQ(last->references, 2) << "the array's and the caller's";
}

// What a plug-in finds in the memory of an array, by the offsets that it knows.
struct SeenByPlugin {
  std::int64_t references;
  const void* data;
  std::int64_t dimensions;
  std::int32_t upperBound;
};

template <class Field>
Field FieldAt(const Array* array, std::size_t offset) {
  Field field;
  std::memcpy(&field, reinterpret_cast<const char*>(array) + offset, sizeof field);
  return field;
}

SeenByPlugin Look(const Array* array, bool isSince2021) {
  return {FieldAt<std::int64_t>(array, 24), FieldAt<const void*>(array, 56),
          isSince2021 ? FieldAt<std::int64_t>(array, 64) : FieldAt<std::int32_t>(array, 64),
          FieldAt<std::int32_t>(array, isSince2021 ? 84 : 76)};
}

TEST_F(HostArrays, CanBeLaidOutWronglyAndStillWork) {
  struct Case {
    const char* note;
    ArrayLayoutFault fault;
    std::int64_t references, dimensions;
    std::int32_t upperBound;
    bool hasData;
  };
  const Case cases[] = {
      {"none", ArrayLayoutFault::kNone, 1, 1, 1, true},
      {"dimensions", ArrayLayoutFault::kDimensionCount, 1, 2, 1, true},
      {"upper bound", ArrayLayoutFault::kUpperBound, 1, 1, 2, true},
      {"references", ArrayLayoutFault::kReferenceCount, 2, 1, 1, true},
      {"no data", ArrayLayoutFault::kNoData, 1, 1, 1, false},
  };
  for (const double version : {2020.02, 2021.0}) {
    for (const Case& c : cases) {
      SCOPED_TRACE(c.note + std::string(" ") + std::to_string(version));
      Host::Current().version = version;
      Host::Current().arrayLayoutFault = c.fault;
      const ArrayRef array = MakeArray(Basic::kString, 0);
      // An array stays as it was made.
      Host::Current().version = 2022.01;
      Host::Current().arrayLayoutFault = ArrayLayoutFault::kNone;
      ASSERT_NE(host::InsertElement(array.Get(), 0), nullptr);
      host::SetElement(array.Get(), 1, host::MakeValue(std::string_view("kept")));
      const SeenByPlugin seen = Look(array.Get(), version >= 2021.0);
      EXPECT_EQ(seen.references, c.references);
      EXPECT_EQ(seen.dimensions, c.dimensions);
      EXPECT_EQ(seen.upperBound, c.upperBound);
      EXPECT_EQ(seen.data != nullptr, c.hasData);
      EXPECT_EQ(Service<std::int64_t (*)(Array*)>("RuntimeUBound")(array.Get()), 1);
      EXPECT_EQ(host::ElementAt<REALstringStruct*>(array.Get(), 1)->View(), "kept");
    }
  }
}

TEST_F(HostArrays, StringsAreOrderedWithoutLetterCase) {
  struct Text {
    std::string_view bytes;
    std::uint32_t encoding = zkt::kEncodingUTF8;
  };
  constexpr std::uint32_t kNil = 1;
  const auto make = [](const Text& text) {
    return text.encoding == kNil ? StringRef() : StringRef(host::MakeString(text.bytes, text.encoding));
  };
  // Texts in one row are equal; every row comes before the next one.
  const std::vector<std::vector<Text>> rows = {
      {{"", kNil}, {""}, {"", zkt::kEncodingUTF16}},
      {{"A"}, {"a"}, {"a", zkt::kEncodingNone}, {"A", zkt::kEncodingMacRoman}, {{"a\0", 2}, zkt::kEncodingUTF16LE}},
      {{{"a\0", 2}}},
      {{"aB"}, {"AB", zkt::kEncodingASCII}, {"Ab", zkt::kEncodingISOLatin1}},
      {{"z"}, {"Z"}},
      {{"\u00C4b"}, {"\u00E4B"}, {"\xC4\x62", zkt::kEncodingISOLatin1}, {"\x8A\x42", zkt::kEncodingMacRoman}},
      {{"\u0100"}, {"\u0101"}},
      {{"\u0416"}, {"\u0436"}},
      {{"\U0001F600"}},
      {{"\x80"}},
      {{"\xC3"}},
      {{"\xFF"}},
  };
  const auto compare =
      Service<std::int32_t (*)(const REALstringStruct*, const REALstringStruct*)>("RuntimeStringCompare");
  const auto sign = [](auto a, auto b) { return a < b ? -1 : a > b ? 1 : 0; };
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (const Text& a : rows[i])
      for (std::size_t j = 0; j < rows.size(); ++j)
        for (const Text& b : rows[j]) {
          const StringRef left = make(a);
          const StringRef right = make(b);
          EXPECT_EQ(sign(compare(left.Get(), right.Get()), 0), sign(i, j)) << a.bytes << " and " << b.bytes;
        }
}

TEST_F(HostArrays, DelegatesCanBePlainFunctions) {
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

// What the script prints, and the error that ends it.
std::string RunScript(std::string_view script) {
  const host::Catalogue catalogue(Host::Current());
  std::ostringstream out;
  host::Interpreter interpreter(catalogue, out);
  try {
    interpreter.RunScript(script);
  } catch (const host::ScriptError& error) {
    out << error.what();
  }
  return out.str();
}

TEST_F(HostArrays, OfEveryTypeWorkInScripts) {
  const std::pair<const char*, const char*> cases[] = {
      {"Var a() As Boolean = Array(True, False)\na.Add True\nPrint a", "True, False, True\n"},
      {"Var a() As Color = Array(&cFF8000, &c000001)\na(1) = &c0000FF\nPrint a", "&cFF8000, &c0000FF\n"},
      {"Var a() As Currency = Array(1.5, 2)\na.Add -3\nPrint a(0), a(1)", "1.5000 2.0000\n"},
      {"Var a() As Single = Array(0.5, 1)\na.Add(0.1)\nPrint a", "0.5, 1, 0.1\n"},
      {"Var a() As UInt32 = Array(4294967295, 0)\nPrint a", "4294967295, 0\n"},
      {"Var a() As UInt64 = Array(18446744073709551615, 1)\nPrint a(0)", "18446744073709551615\n"},
      {"Var a() As UInt64\na.Add 18446744073709551615\nPrint a", "18446744073709551615\n"},
      {"Var a As Int64 = 18446744073709551615", "line 1: cannot use 18446744073709551615 as Integer"},
      {"Print 18446744073709551616", "line 1: cannot read the number 18446744073709551616"},
      {"Var a() As Ptr = Array(255, 0)\na.Add(&h10)\nPrint a", "&hFF, &h0, &h10\n"},
      {"Var a() As Variant = Array(1, 2.5)\na.Add \"x\"\na.Add Nil\nPrint a", "1, 2.5, x, Nil\n"},
      {"Var a() As Variant\na.Add New Date(2024, 2, 29)\nPrint a(0), a(0).Month", "2024-02-29 00:00:00 2\n"},
      {"Var a() As Date = Array(New Date(2024, 1, 31), Nil)\na.Add New Date(1999, 12, 31, 23, 59, 58)\nPrint a",
       "2024-01-31 00:00:00, Nil, 1999-12-31 23:59:58\n"},
      {"Var a() As DateTime = Array(New DateTime(2024, 1, 31))\nPrint a(0).Day, a.Count", "31 1\n"},
      {"Var a() As Date = Array(New DateTime(2024, 1, 31))", "line 1: cannot use 2024-01-31 00:00:00 as Date()"},
      {"Var a() As Object = Array(New Object, New Date(2024, 1, 1))\nPrint a", "Object, 2024-01-01 00:00:00\n"},
      {"Var a() As RuntimeException = Array(New NilObjectException, New OutOfBoundsException)\nPrint a",
       "NilObjectException, OutOfBoundsException\n"},
      {"Var small As Int32 = 1\nVar large As Int64 = 5000000000\nPrint Array(small, large)", "1, 5000000000\n"},
      {"Print Array(New NilObjectException, 1)", "NilObjectException, 1\n"},
  };
  for (const auto& [script, want] : cases) EXPECT_EQ(RunScript(script), want) << script;
}

TEST_F(HostArrays, LiteralsHaveTheTypeThatTheirElementsShare) {
  const std::pair<const char*, const char*> cases[] = {
      {"Array(New NilObjectException, New OutOfBoundsException)", "Object()"},
      {"Array(New OutOfBoundsException, New OutOfBoundsException)", "OutOfBoundsException()"},
      {"Array(New NilObjectException, 1)", "Variant()"},
      {"Array(New Date, New DateTime)", "Object()"},
      {"Array(Nil, New Date)", "Date()"},
      {"Array(1, 2.5)", "Double()"},
  };
  // The refusal names the type.
  for (const auto& [literal, want] : cases)
    EXPECT_EQ(RunScript(std::string("Print ") + literal + ".Nothing"),
              std::string("line 1: ") + want + " has no Nothing");
}

// Sets the time zone of the process for a scope.
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

TEST_F(HostArrays, DatesKeepFieldsAndSecondsInStep) {
  // One hour east of Greenwich, two from the last Sunday of March to that of October.
  const TimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
  const std::pair<const char*, const char*> cases[] = {
      {"Var d As New Date(2024, 1, 31, 13, 5, 9)\nPrint d.Year, d.Month, d.Day, d.Hour, d.Minute, d.Second",
       "2024 1 31 13 5 9\n"},
      {"Print New Date(1904, 1, 1).TotalSeconds, New Date(1904, 1, 2, 0, 0, 1).TotalSeconds", "0 86401\n"},
      {"Print New Date(1970, 1, 1).TotalSeconds, New Date(1903, 12, 31).TotalSeconds", "2082844800 -86400\n"},
      {"Print New Date(2024, 7, 1).TotalSeconds - New Date(2024, 1, 1).TotalSeconds", "15724800\n"},
      {"Print New DateTime(1970, 1, 1).SecondsFrom1970, New DateTime(1970, 1, 1, 0, 59, 59).SecondsFrom1970",
       "-3600 -1\n"},
      {"Print New DateTime(2024, 7, 1).SecondsFrom1970 - New DateTime(2024, 1, 1).SecondsFrom1970", "15721200\n"},
      {"Print New Date(2023, 2, 29), New DateTime(2024, 13, 1)", "2023-03-01 00:00:00 2025-01-01 00:00:00\n"},
      {"Var d As New Date(2024, 1, 31)\nd.Month = 2\nPrint d\nd.TotalSeconds = 86400\nPrint d",
       "2024-03-02 00:00:00\n1904-01-02 00:00:00\n"},
      {"Var d As New DateTime(2024, 1, 31)\nd.Month = 2", "line 2: Month is read-only"},
      {"Print New Date(2024, 1)", "line 1: Date is made of three to six numbers"},
      {"Print New Date(2024, 1, \"x\")", "line 1: Date is made of numbers"},
      {"Print New DateTime(99999999999, 1, 1)", "line 1: there is no such DateTime"},
      {"Var d As Date\nPrint d\nPrint d.Year", "Nil\nNilObjectException: Year of Nil (error 0)\n"},
  };
  for (const auto& [script, want] : cases) EXPECT_EQ(RunScript(script), want) << script;
}

TEST_F(HostArrays, NewDatesAreNow) {
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

// Reads a property through a service; the result byte has to be 0 or 1, and a failure leaves the place alone.
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

TEST_F(HostArrays, ServicesReadPropertiesOfTheirTypeOnly) {
  const host::ObjectClass flagged = {"Flagged",
                                     nullptr,
                                     {{"Flag", {{Basic::kBoolean, false, {}}, std::int64_t{1}}},
                                      {"Tint", {{Basic::kColor, false, {}}, std::int64_t{0xFF8000}}}}};
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
  EXPECT_EQ(message->references, 3) << "the test's, the property's and the receiver's";
  host::Unlock(*text);
  EXPECT_EQ(Read<REALstringStruct*>("REALGetPropValueString", exception.Get(), "ErrorNumber", nullptr), std::nullopt);
}

TEST_F(HostArrays, ServicesLoadMethodsByTheirExactText) {
  using Load = void* (*)(REALobjectStruct*, const char*);
  const auto load = reinterpret_cast<Load>(host::Resolve("REALLoadObjectMethod"));
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
  host::Host::Current().withheld = {"Handle() as Ptr"};
  EXPECT_EQ(load(base.Get(), "Handle() as Ptr"), nullptr);
  host::Host::Current().withheld.clear();
  methods.clear();
  EXPECT_EQ(load(base.Get(), "Handle() as Ptr"), nullptr);
}

TEST_F(HostArrays, ReadyFunctionsOrderDatesAndVariants) {
  const host::Catalogue catalogue(Host::Current());
  const auto date = [&](const char* className, std::int64_t day) {
    const host::Operand arguments[] = {
        {host::MakeValue(std::int64_t{1960})}, {host::MakeValue(day)}, {host::MakeValue(day)}};
    return host::MakeNew(catalogue, className, {std::begin(arguments), std::end(arguments)});
  };
  // Each comes before the next.
  const std::vector<std::pair<const char*, host::Value>> ascending = {
      {"Nil", {}},
      {"negative", host::MakeValue(-1.5)},
      {"one as Currency", {{Basic::kCurrency, false, {}}, std::int64_t{10000}}},
      {"more than one", host::MakeValue(1.00005)},
      {"two", host::MakeValue(std::int64_t{2})},
      {"largest but one", host::MakeValue(std::numeric_limits<std::int64_t>::max() - 1)},
      {"largest", host::MakeValue(std::numeric_limits<std::int64_t>::max())},
      {"largest UInt64", {{Basic::kUInt64, false, {}}, std::int64_t{-1}}},
      {"empty text", host::MakeValue(std::string_view())},
      {"ab", host::MakeValue(std::string_view("ab"))},
      {"B", host::MakeValue(std::string_view("B"))},
      {"early Date", date("Date", 1)},
      {"late Date", date("Date", 2)},
  };
  const host::DelegateTarget up = host::FindReadyFunction("CompareAscending")->target;
  const host::DelegateTarget down = host::FindReadyFunction("CompareDescending")->target;
  const auto boxed = [&](const host::Value& value) {
    return host::Convert({value, nullptr, true, {}}, {Basic::kVariant, false, {}}, catalogue)->value;
  };
  for (std::size_t i = 0; i < ascending.size(); ++i)
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      const host::Value pair[] = {boxed(ascending[i].second), boxed(ascending[j].second)};
      const int want = i < j ? -1 : i > j ? 1 : 0;
      EXPECT_EQ(up(pair).Integer(), want) << ascending[i].first << " and " << ascending[j].first;
      EXPECT_EQ(down(pair).Integer(), -want) << ascending[i].first << " and " << ascending[j].first;
    }
  for (const char* const className : {"Date", "DateTime"}) {
    const host::Value unequal[] = {date(className, 3), date(className, 4)};
    EXPECT_EQ(up(unequal).Integer(), -1) << className;
    const host::Value equal[] = {date(className, 3), date(className, 3)};
    EXPECT_EQ(up(equal).Integer(), 0) << className << ": two objects of one moment";
  }
}

}  // namespace
