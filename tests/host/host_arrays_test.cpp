// Tests the development host's arrays and string order as a plug-in uses them: through services that are looked up by
// name.
#include <cstring>
#include <utility>
#include <vector>

#include "core/arrays.h"
#include "core/strings.h"
#include "host/script_test.h"

namespace {

using host::Array;
using host::ArrayRef;
using host::Host;
using host::StringRef;
using host::TypeKind;
using tests::Service;

ArrayRef MakeArray(TypeKind kind, std::int64_t upperBound = -1) {
  return ArrayRef(host::MakeArray({kind, false, {}}, upperBound));
}

class HostArrays : public tests::ScriptTest {
 protected:
  ~HostArrays() override { Host::Current().version = 2024.03; }
};

// Inserts `first`, then inserts `second` at index 0 until the array has to grow, and checks the array's memory.
template <class Element>
void CheckInserter(const char* service, TypeKind kind, Element first, Element second) {
  using Inserter = void (*)(void*, std::int64_t, Element);
  const ArrayRef array = MakeArray(kind);
  const Inserter insert = Service<Inserter (*)(void*)>(service)(array.Get());
  ASSERT_NE(insert, nullptr) << service;
  insert(array.Get(), 0, first);
  for (int i = 0; i < 20; ++i) insert(array.Get(), 0, second);
  insert(array.Get(), 99, first);
  insert(array.Get(), -1, first);
  ASSERT_EQ(host::UpperBound(array.Get()), 20) << service << ": nothing is inserted out of range";
  const auto* const elements = reinterpret_cast<const Element*>(array->data);
  EXPECT_EQ(elements[20], first) << service;
  for (int i = 0; i < 20; ++i) EXPECT_EQ(elements[i], second) << service << " at " << i;
}

TEST_F(HostArrays, InsertElementsOfEveryWidth) {
  CheckInserter<std::uint8_t>("PluginBooleanArrayInsertProc", TypeKind::kBoolean, 1, 0);
  CheckInserter<float>("PluginSingleArrayInsertProc", TypeKind::kSingle, -0.1F, 1e30F);
  CheckInserter<double>("PluginDoubleArrayInsertProc", TypeKind::kDouble, -0.1, 1e300);
  CheckInserter<std::int32_t>("PluginInt32ArrayInsertProc", TypeKind::kInt32, INT32_MIN, -1);
  CheckInserter<std::int64_t>("PluginIntegerArrayInsertProc", TypeKind::kInt64, INT64_MIN, -1);
  CheckInserter<void*>("PluginIntegerArrayInsertProc", TypeKind::kPtr, &Host::Current(), nullptr);
}

TEST_F(HostArrays, HoldTheirOwnReferences) {
  const StringRef text(host::MakeString("text"));
  CheckInserter<REALstringStruct*>("PluginStringArrayInsertProc", TypeKind::kString, text.Get(), nullptr);
  EXPECT_EQ(text->referenceCount, 1) << "the array has released its reference";
  const host::ObjectRef object(host::MakeObject(host::FindClass("RuntimeException")));
  for (const TypeKind kind : {TypeKind::kObject, TypeKind::kVariant})
    CheckInserter<REALobjectStruct*>("PluginObjectArrayInsertProc", kind, nullptr, object.Get());
  EXPECT_EQ(object->referenceCount, 1);
}

TEST_F(HostArrays, ReturnNoProcedureForOtherElementTypes) {
  const ArrayRef bytes = MakeArray(TypeKind::kBoolean, 3);
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

  const ArrayRef texts = MakeArray(TypeKind::kString, 1);
  host::SetElement(texts.Get(), 1, host::MakeValue(std::string_view("last")));
  const auto readString = Service<REALstringStruct* (*)(Array*, std::int64_t)>("RuntimeDirectReadStringArray");
  for (const std::int64_t index : {-1, 0, 2}) EXPECT_EQ(readString(texts.Get(), index), nullptr) << index;
  const StringRef last(readString(texts.Get(), 1));
  EXPECT_EQ(last->View(), "last");
  EXPECT_EQ(last->referenceCount, 2) << "the references of the array and the caller";
}

template <class Field>
Field FieldAt(const Array* array, std::size_t offset) {
  Field field;
  std::memcpy(&field, reinterpret_cast<const char*>(array) + offset, sizeof field);
  return field;
}

// Plug-ins read the fields of arrays at fixed offsets, which differ between Xojo versions.
TEST_F(HostArrays, KeepTheLayoutOfTheVersionThatCreatedThem) {
  for (const bool isSince2021 : {false, true}) {
    Host::Current().version = isSince2021 ? 2021.0 : 2020.02;
    const ArrayRef array = MakeArray(TypeKind::kString, 0);
    Host::Current().version = 2022.01;
    ASSERT_NE(host::InsertElement(array.Get(), 0), nullptr);
    host::SetElement(array.Get(), 1, host::MakeValue(std::string_view("kept")));
    EXPECT_EQ(FieldAt<std::int64_t>(array.Get(), 24), 1) << "references";
    EXPECT_EQ(FieldAt<REALstringStruct**>(array.Get(), 56)[1]->View(), "kept");
    EXPECT_EQ(isSince2021 ? FieldAt<std::int64_t>(array.Get(), 64) : FieldAt<std::int32_t>(array.Get(), 64), 1)
        << "dimensions";
    EXPECT_EQ(FieldAt<std::int32_t>(array.Get(), isSince2021 ? 84 : 76), 1) << "upper bound";
    EXPECT_EQ(Service<std::int64_t (*)(Array*)>("RuntimeUBound")(array.Get()), 1);
  }
}

TEST_F(HostArrays, CompareStringsIgnoringCase) {
  struct Text {
    std::string_view bytes;
    std::uint32_t encoding = zkt::kEncodingUTF8;
  };
  constexpr std::uint32_t kNil = 1;
  const auto make = [](const Text& text) {
    return text.encoding == kNil ? StringRef() : StringRef(host::MakeString(text.bytes, text.encoding));
  };
  // Strings in the same row are equal, and the strings in each row sort before those in the next row.
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

}  // namespace
