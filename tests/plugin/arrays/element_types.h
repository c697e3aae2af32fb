// The element types of arrays, and the native functions for each type.
#pragma once

#include <functional>
#include <string>

#include "arrays/add.h"
#include "arrays/copy.h"
#include "arrays/count_value.h"
#include "arrays/equals.h"
#include "arrays/reverse.h"
#include "arrays/sort.h"
#include "arrays/sort_delegate.h"
#include "arrays/sum.h"
#include "core/objects.h"
#include "support/host_fixture.h"

namespace tests {

namespace element {

// An element is stored as StoredType, compared and added as ValueType, and passed to native functions as ArgumentType.
template <class StoredType, class ValueType = StoredType, class ArgumentType = StoredType>
struct Number {
  using Stored = StoredType;
  using Value = ValueType;
  using Argument = ArgumentType;
  static constexpr bool kIsReference = false;
  static bool Less(Stored a, Stored b) { return static_cast<Value>(a) < static_cast<Value>(b); }
  static bool Equal(Stored a, Stored b) { return a == b; }
};

struct Reference {
  using Stored = host::RefCounted*;
  static constexpr bool kIsReference = true;
  static bool Less(Stored a, Stored b) { return std::less<>()(a, b); }
};

struct Dated : Reference {
  static double Seconds(Stored date) {
    auto* const object = static_cast<REALobjectStruct*>(date);
    for (const char* const name : {"TotalSeconds", "SecondsFrom1970"})
      if (const host::Value* const seconds = host::FindProperty(object, name)) return seconds->Real();
    return 0.0;
  }
  static bool Less(Stored a, Stored b) { return Seconds(a) < Seconds(b); }
};

// The native functions for an element type, in groups. A type has either all functions of a group or none.
template <class Array>
Array ArrayOf(void (*reverse)(Array*));

template <auto reverse, auto add, auto copy>
struct Sequence {
  using Array = decltype(ArrayOf(reverse));
  static constexpr auto kReverse = reverse;
  static constexpr auto kAdd = add;
  static constexpr auto kCopy = copy;
};

template <auto sort, auto sortDelegate, auto equals>
struct Ordered {
  static constexpr auto kSort = sort;
  static constexpr auto kSortDelegate = sortDelegate;
  static constexpr auto kEquals = equals;
};

template <auto count>
struct Counted {
  static constexpr auto kCount = count;
};

template <auto count, auto sum>
struct Summed : Counted<count> {
  static constexpr auto kSum = sum;
};

struct Boolean : Number<std::uint8_t, std::int8_t, REALboolean>,
                 Sequence<&zkt::ReverseZKT_Boolean, &zkt::AddArrayZKT_Boolean, &zkt::CopyArrayZKT_Boolean>,
                 Ordered<&zkt::SortArrayZKT_Boolean, &zkt::SortArrayZKT_BooleanDel, &zkt::EqualsArrayZKT_Boolean>,
                 Summed<&zkt::CountValueZKT_Boolean, &zkt::SumArrayZKT_Boolean> {
  static constexpr const char* kName = "Boolean";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueBoolean;
};

struct Currency : Number<std::int64_t, std::int64_t, REALcurrency>,
                  Sequence<&zkt::ReverseZKT_Currency, &zkt::AddArrayZKT_Currency, &zkt::CopyArrayZKT_Currency>,
                  Ordered<&zkt::SortArrayZKT_Currency, &zkt::SortArrayZKT_CurrencyDel, &zkt::EqualsArrayZKT_Currency>,
                  Summed<&zkt::CountValueZKT_Currency, &zkt::SumArrayZKT_Currency> {
  static constexpr const char* kName = "Currency";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueCurrency;
};

struct Double : Number<double>,
                Sequence<&zkt::ReverseZKT_Double, &zkt::AddArrayZKT_Double, &zkt::CopyArrayZKT_Double>,
                Ordered<&zkt::SortArrayZKT_Double, &zkt::SortArrayZKT_DoubleDel, &zkt::EqualsArrayZKT_Double>,
                Summed<&zkt::CountValueZKT_Double, &zkt::SumArrayZKT_Double> {
  static constexpr const char* kName = "Double";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueDouble;
};

struct Int32 : Number<std::int32_t>,
               Sequence<&zkt::ReverseZKT_Int32, &zkt::AddArrayZKT_Int32, &zkt::CopyArrayZKT_Int32>,
               Ordered<&zkt::SortArrayZKT_Int32, &zkt::SortArrayZKT_Int32Del, &zkt::EqualsArrayZKT_Int32>,
               Summed<&zkt::CountValueZKT_Int32, &zkt::SumArrayZKT_Int32> {
  static constexpr const char* kName = "Int32";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueInt32;
};

struct Int64 : Number<std::int64_t>,
               Sequence<&zkt::ReverseZKT_Int64, &zkt::AddArrayZKT_Int64, &zkt::CopyArrayZKT_Int64>,
               Ordered<&zkt::SortArrayZKT_Int64, &zkt::SortArrayZKT_Int64Del, &zkt::EqualsArrayZKT_Int64>,
               Summed<&zkt::CountValueZKT_Int64, &zkt::SumArrayZKT_Int64> {
  static constexpr const char* kName = "Int64";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueInt64;
};

struct Single : Number<float>,
                Sequence<&zkt::ReverseZKT_Single, &zkt::AddArrayZKT_Single, &zkt::CopyArrayZKT_Single>,
                Ordered<&zkt::SortArrayZKT_Single, &zkt::SortArrayZKT_SingleDel, &zkt::EqualsArrayZKT_Single>,
                Summed<&zkt::CountValueZKT_Single, &zkt::SumArrayZKT_Single> {
  static constexpr const char* kName = "Single";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueSingle;
};

struct UInt32 : Number<std::uint32_t>,
                Sequence<&zkt::ReverseZKT_UInt32, &zkt::AddArrayZKT_UInt32, &zkt::CopyArrayZKT_UInt32>,
                Ordered<&zkt::SortArrayZKT_UInt32, &zkt::SortArrayZKT_UInt32Del, &zkt::EqualsArrayZKT_UInt32>,
                Summed<&zkt::CountValueZKT_UInt32, &zkt::SumArrayZKT_UInt32> {
  static constexpr const char* kName = "UInt32";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueUInt32;
};

struct UInt64 : Number<std::uint64_t>,
                Sequence<&zkt::ReverseZKT_UInt64, &zkt::AddArrayZKT_UInt64, &zkt::CopyArrayZKT_UInt64>,
                Ordered<&zkt::SortArrayZKT_UInt64, &zkt::SortArrayZKT_UInt64Del, &zkt::EqualsArrayZKT_UInt64>,
                Summed<&zkt::CountValueZKT_UInt64, &zkt::SumArrayZKT_UInt64> {
  static constexpr const char* kName = "UInt64";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueUInt64;
};

struct Ptr : Number<std::uintptr_t, std::uintptr_t, void*>,
             Sequence<&zkt::ReverseZKT_Ptr, &zkt::AddArrayZKT_Ptr, &zkt::CopyArrayZKT_Ptr>,
             Ordered<&zkt::SortArrayZKT_Ptr, &zkt::SortArrayZKT_PtrDel, &zkt::EqualsArrayZKT_Ptr>,
             Counted<&zkt::CountValueZKT_Ptr> {
  static constexpr const char* kName = "Ptr";
  static constexpr auto& kInserter = zkt::REALInsertArrayValuePtr;
};

struct Color : Number<std::uint32_t, std::uint32_t, REALcolor>,
               Sequence<&zkt::ReverseZKT_Color, &zkt::AddArrayZKT_Color, &zkt::CopyArrayZKT_Color>,
               Ordered<&zkt::SortArrayZKT_Color, &zkt::SortArrayZKT_ColorDel, &zkt::EqualsArrayZKT_Color> {
  static constexpr const char* kName = "Color";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueColor;
};

struct Object : Reference, Sequence<&zkt::ReverseZKT_Object, &zkt::AddArrayZKT_Object, &zkt::CopyArrayZKT_Object> {
  static constexpr const char* kName = "Object";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueObject;
};

struct Variant : Reference, Sequence<&zkt::ReverseZKT_Variant, &zkt::AddArrayZKT_Variant, &zkt::CopyArrayZKT_Variant> {
  static constexpr const char* kName = "Variant";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueObject;
  static constexpr auto kSortDelegate = &zkt::SortArrayZKT_ObjectDel;
};

struct Date : Dated, Sequence<&zkt::ReverseZKT_Date, &zkt::AddArrayZKT_Date, &zkt::CopyArrayZKT_Date> {
  static constexpr const char* kName = "Date";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueObject;
  static constexpr auto kSort = &zkt::SortArrayZKT_Date;
};

struct DateTime : Dated, Sequence<&zkt::ReverseZKT_DateTime, &zkt::AddArrayZKT_DateTime, &zkt::CopyArrayZKT_DateTime> {
  static constexpr const char* kName = "DateTime";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueObject;
  static constexpr auto kSort = &zkt::SortArrayZKT_DateTime;
  static constexpr auto kSortDelegate = &zkt::SortArrayZKT_DateTimeDel;
};

struct String : Reference,
                Sequence<&zkt::ReverseZKT_String, &zkt::AddArrayZKT_String, &zkt::CopyArrayZKT_String>,
                Ordered<&zkt::SortArrayZKT_String, &zkt::SortArrayZKT_StringDel, &zkt::EqualsArrayZKT_String>,
                Counted<&zkt::CountValueZKT_String> {
  static constexpr const char* kName = "String";
  static constexpr auto& kInserter = zkt::REALInsertArrayValueString;
  using Argument = REALstring;
  static std::int32_t Compare(Stored a, Stored b) {
    return zkt::REALCompareStrings(static_cast<REALstring>(a), static_cast<REALstring>(b));
  }
  static bool Less(Stored a, Stored b) { return Compare(a, b) < 0; }
  static bool Equal(Stored a, Stored b) { return a == b || Compare(a, b) == 0; }
};

using EverySum = testing::Types<Boolean, Currency, Double, Int32, Int64, Single, UInt32, UInt64>;
using EveryCount = testing::Types<Boolean, Currency, Double, Int32, Int64, Single, UInt32, UInt64, Ptr, String>;
using EveryEquals = testing::Types<Boolean, Currency, Double, Int32, Int64, Single, UInt32, UInt64, Ptr, String, Color>;
using EverySort =
    testing::Types<Boolean, Currency, Double, Int32, Int64, Single, UInt32, UInt64, Ptr, String, Color, Date, DateTime>;
using EveryDelegate = testing::Types<Boolean, Currency, Double, Int32, Int64, Single, UInt32, UInt64, Ptr, String,
                                     Color, Variant, DateTime>;
using Every = testing::Types<Boolean, Currency, Double, Int32, Int64, Single, UInt32, UInt64, Ptr, String, Color, Date,
                             DateTime, Object, Variant>;

struct Name {
  template <class T>
  static std::string GetName(int) {
    return T::kName;
  }
};

}  // namespace element

template <class T>
auto Sum(typename T::Array* array, std::int64_t index, std::int64_t count, REALboolean checkOverflow) {
  if constexpr (std::is_invocable_v<decltype(T::kSum), typename T::Array*, int, int, REALboolean>)
    return T::kSum(array, index, count, checkOverflow);
  else
    return T::kSum(array, index, count);
}

}  // namespace tests
