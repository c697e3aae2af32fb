// The element types of arrays, with the native functions for each.
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

// How an element lies in memory, as what it is compared and added, and how a native function takes one.
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
  using Stored = host::Counted*;
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

// clang-format off
#define EVERY(T) \
  using Array = _REALarray##T; \
  static constexpr const char* kName = #T; \
  static constexpr auto kReverse = &zkt::ReverseZKT_##T; \
  static constexpr auto kAdd = &zkt::AddArrayZKT_##T; \
  static constexpr auto kCopy = &zkt::CopyArrayZKT_##T;
#define SORTED(T)    EVERY(T)    static constexpr auto kSort = &zkt::SortArrayZKT_##T;
#define DELEGATED(T) SORTED(T)   static constexpr auto kSortDelegate = &zkt::SortArrayZKT_##T##Del;
#define COMPARED(T) DELEGATED(T) static constexpr auto kEquals = &zkt::EqualsArrayZKT_##T;
#define COUNTED(T)  COMPARED(T)  static constexpr auto kCount = &zkt::CountValueZKT_##T;
#define SUMMED(T)   COUNTED(T)   static constexpr auto kSum = &zkt::SumArrayZKT_##T;
#define INSERTED_AS(T, Host) \
  static constexpr auto& kInserter = zkt::REALInsertArrayValue##T; \
  static constexpr auto* kInserterName = "Plugin" #Host "ArrayInsertProc";
#define INSERTED(T) INSERTED_AS(T, T)
struct Boolean  : Number<std::uint8_t, std::int8_t, REALboolean>             { SUMMED(Boolean) INSERTED(Boolean) };
struct Currency : Number<std::int64_t, std::int64_t, REALcurrency>           { SUMMED(Currency) INSERTED(Currency) };
struct Double   : Number<double>                                             { SUMMED(Double) INSERTED(Double) };
struct Int32    : Number<std::int32_t>                                       { SUMMED(Int32) INSERTED(Int32) };
struct Int64    : Number<std::int64_t>                                       { SUMMED(Int64) INSERTED(Int64) };
struct Single   : Number<float>                                              { SUMMED(Single) INSERTED(Single) };
struct UInt32   : Number<std::uint32_t>                                      { SUMMED(UInt32) INSERTED(UInt32) };
struct UInt64   : Number<std::uint64_t>                                      { SUMMED(UInt64) INSERTED(UInt64) };
struct Ptr      : Number<std::uintptr_t, std::uintptr_t, void*>              { COUNTED(Ptr) INSERTED_AS(Ptr, Integer) };
struct Color    : Number<std::uint32_t, std::uint32_t, REALcolor>            { COMPARED(Color) INSERTED(Color) };
struct Object   : Reference { EVERY(Object) INSERTED(Object) };
struct Variant  : Reference { EVERY(Variant) INSERTED(Object) static constexpr auto kSortDelegate = &zkt::SortArrayZKT_ObjectDel; };
struct Date     : Dated { SORTED(Date) INSERTED(Object) };
struct DateTime : Dated { DELEGATED(DateTime) INSERTED(Object) };
struct String   : Reference {
  COUNTED(String) INSERTED(String)
  using Argument = REALstring;
  static std::int32_t Compare(Stored a, Stored b) { return zkt::REALCompareStrings(static_cast<REALstring>(a), static_cast<REALstring>(b)); }
  static bool Less(Stored a, Stored b) { return Compare(a, b) < 0; }
  static bool Equal(Stored a, Stored b) { return a == b || Compare(a, b) == 0; }
};
#undef EVERY
#undef SORTED
#undef DELEGATED
#undef COMPARED
#undef COUNTED
#undef SUMMED
#undef INSERTED
#undef INSERTED_AS
// clang-format on

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
