// The module "SortZKT": everything that works on whole arrays.
#include <iterator>

#include "arrays/add.h"
#include "arrays/copy.h"
#include "arrays/count_value.h"
#include "arrays/equals.h"
#include "arrays/reverse.h"
#include "arrays/sort.h"
#include "arrays/sort_delegate.h"
#include "arrays/sum.h"
#include "frame/catalogue_tables.h"
#include "frame/rows.h"

namespace zkt {

namespace {

// Usable everywhere; Date belongs to the projects that have it.
constexpr std::uint32_t kEverywhere = 0x14;
constexpr std::uint32_t kWithDate = 0x318;
constexpr std::uint32_t kWithDateTime = kEverywhere | kNeedsHost2019r2;

// clang-format off
#define RANGE "sourceIndex as Integer = 0, sourceCount as Integer = -2"
#define REVERSE(T, flags) Method("ReverseZKT(extends theArray() as " #T ")", ReverseZKT_##T, flags)
#define SUM(name, T, result) Method(name "source() as " #T ", " RANGE ") as " #result, SumArrayZKT_##T, kEverywhere)
#define SUM_CHECKED(name, T, result) Method(name "source() as " #T ", " RANGE ", CheckOverflow as Boolean = false) as " #result, SumArrayZKT_##T, kEverywhere)
#define COUNT(T) Method("CountValueZKT(extends source() as " #T ", value as " #T ", " RANGE ") as Integer", CountValueZKT_##T, kEverywhere)
#define EQUALS(name, T) Method(name "array1() as " #T ", array2() as " #T ", array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean", EqualsArrayZKT_##T, kEverywhere)
#define ADD(name, T, flags) Method(name "array1() as " #T ", array2() as " #T ")", AddArrayZKT_##T, flags)
#define COPY(name, T, flags) Method(name "source() as " #T ", dest() as " #T ", " RANGE ", destIndex as Integer = 0)", CopyArrayZKT_##T, flags)
#define SORT(name, T, flags) Method(name "theArray() as " #T ", descending as boolean = false)", SortArrayZKT_##T, flags)
#define SORT_DELEGATE(name, T, function, flags) Method(name "theArray() as " #T ", theDelegate as SortVariantDelegate" #T "ZKT, descending as boolean = false)", function, flags)
#define COMPARISON(T, type, flags) Delegate<std::int64_t(type, type)>("SortVariantDelegate" #T "ZKT(v1 as " #T ", v2 as " #T ") as Integer", flags)

// Each array function is declared twice: as a method that takes the array, and as one that extends it.
#define SUMS(name) \
    SUM(name, Boolean, Int64), SUM_CHECKED(name, Currency, Currency), SUM(name, Int32, Int64), SUM_CHECKED(name, Int64, Int64), \
    SUM_CHECKED(name, UInt32, UInt64), SUM_CHECKED(name, UInt64, UInt64), SUM(name, Double, Double), SUM(name, Single, Double)
#define EQUALITIES(name) \
    EQUALS(name, Boolean), EQUALS(name, Color), EQUALS(name, Currency), EQUALS(name, Double), EQUALS(name, Int32), EQUALS(name, Int64), \
    EQUALS(name, Ptr), EQUALS(name, Single), EQUALS(name, String), EQUALS(name, UInt32), EQUALS(name, UInt64)
#define ADDITIONS(name) \
    ADD(name, Boolean, kEverywhere), ADD(name, Color, kEverywhere), ADD(name, Currency, kEverywhere), ADD(name, Double, kEverywhere), \
    ADD(name, Int32, kEverywhere), ADD(name, Int64, kEverywhere), ADD(name, Ptr, kEverywhere), ADD(name, Single, kEverywhere), \
    ADD(name, String, kEverywhere), ADD(name, UInt32, kEverywhere), ADD(name, UInt64, kEverywhere), ADD(name, Object, kEverywhere), \
    ADD(name, Date, kWithDate), ADD(name, Variant, kEverywhere)
#define COPIES(name) \
    COPY(name, Boolean, kEverywhere), COPY(name, Color, kEverywhere), COPY(name, Currency, kEverywhere), COPY(name, Double, kEverywhere), \
    COPY(name, Int32, kEverywhere), COPY(name, Int64, kEverywhere), COPY(name, Ptr, kEverywhere), COPY(name, Single, kEverywhere), \
    COPY(name, String, kEverywhere), COPY(name, UInt32, kEverywhere), COPY(name, UInt64, kEverywhere), COPY(name, Variant, kEverywhere), \
    COPY(name, Object, kEverywhere)
#define SORTS(name) \
    SORT(name, Boolean, kEverywhere), SORT(name, Color, kEverywhere), SORT(name, Currency, kEverywhere), SORT(name, Date, kWithDate), \
    SORT(name, Double, kEverywhere), SORT(name, Int32, kEverywhere), SORT(name, Int64, kEverywhere), SORT(name, Ptr, kEverywhere), \
    SORT(name, Single, kEverywhere), SORT(name, String, kEverywhere), SORT(name, UInt32, kEverywhere), SORT(name, UInt64, kEverywhere)
#define SORT_BY(name, T) SORT_DELEGATE(name, T, SortArrayZKT_##T##Del, kEverywhere)
#define DELEGATE_SORTS(name) \
    SORT_BY(name, Boolean), SORT_BY(name, Color), SORT_BY(name, Currency), SORT_BY(name, Double), SORT_BY(name, Int32), SORT_BY(name, Int64), \
    SORT_DELEGATE(name, Variant, SortArrayZKT_ObjectDel, kEverywhere), SORT_BY(name, Ptr), SORT_BY(name, Single), SORT_BY(name, String), \
    SORT_BY(name, UInt32), SORT_BY(name, UInt64)

REALmethodDefinition gMethods[] = {
    REVERSE(Boolean, kEverywhere), REVERSE(Color, kEverywhere), REVERSE(Currency, kEverywhere), REVERSE(Date, kWithDate),
    REVERSE(Double, kEverywhere), REVERSE(Int32, kEverywhere), REVERSE(Int64, kEverywhere), REVERSE(Ptr, kEverywhere),
    REVERSE(Single, kEverywhere), REVERSE(String, kEverywhere), REVERSE(UInt32, kEverywhere), REVERSE(UInt64, kEverywhere),
    REVERSE(Variant, kEverywhere), REVERSE(Object, kEverywhere),
    SUMS("SumArrayZKT("),
    SUMS("SumZKT(extends "),
    COUNT(Boolean), COUNT(Currency), COUNT(Int32), COUNT(Int64), COUNT(UInt32), COUNT(UInt64), COUNT(Double), COUNT(Single),
    COUNT(Ptr), COUNT(String),
    EQUALITIES("EqualsArrayZKT("),
    EQUALITIES("EqualsZKT(extends "),
    ADDITIONS("AddArrayZKT("),
    ADDITIONS("AddZKT(extends "),
    COPIES("CopyArrayZKT("),
    COPIES("CopyZKT(extends "),
    SORTS("SortArrayZKT("),
    SORTS("SortZKT(extends "),
    DELEGATE_SORTS("SortArrayZKT("),
    DELEGATE_SORTS("SortZKT(extends "),

    // What older hosts cannot compile. The copies for Date stand among it, and are missing there too.
    SORT_DELEGATE("SortArrayZKT(", DateTime, SortArrayZKT_DateTimeDel, kWithDateTime),
    SORT("SortArrayZKT(", DateTime, kWithDateTime),
    SORT_DELEGATE("SortZKT(extends ", DateTime, SortArrayZKT_DateTimeDel, kWithDateTime),
    SORT("SortZKT(extends ", DateTime, kWithDateTime),
    REVERSE(DateTime, kWithDateTime),
    ADD("AddArrayZKT(", DateTime, kWithDateTime),
    ADD("AddZKT(extends ", DateTime, kWithDateTime),
    COPY("CopyArrayZKT(", Date, kWithDate | kNeedsHost2019r2),
    COPY("CopyArrayZKT(", DateTime, kWithDateTime),
    COPY("CopyZKT(extends ", Date, kWithDate | kNeedsHost2019r2),
    COPY("CopyZKT(extends ", DateTime, kWithDateTime),
};
static_assert(std::size(gMethods) == 175);

REALdelegate gDelegates[] = {
    COMPARISON(Variant,  REALobject,    kConsoleSafe),
    COMPARISON(String,   REALstring,    kConsoleSafe),
    COMPARISON(Single,   float,         kConsoleSafe),
    COMPARISON(Double,   double,        kConsoleSafe),
    COMPARISON(Int32,    std::int32_t,  kConsoleSafe),
    COMPARISON(Int64,    std::int64_t,  kConsoleSafe),
    COMPARISON(UInt32,   std::uint32_t, kConsoleSafe),
    COMPARISON(UInt64,   std::uint64_t, kConsoleSafe),
    COMPARISON(Color,    REALcolor,     kConsoleSafe),
    COMPARISON(Boolean,  REALboolean,   kConsoleSafe),
    COMPARISON(Currency, REALcurrency,  kConsoleSafe),
    COMPARISON(Ptr,      void*,         kConsoleSafe),
    COMPARISON(DateTime, REALdateTime,  kConsoleSafe | kNeedsHost2019r2),
};
static_assert(std::size(gDelegates) == 13);
// clang-format on

#undef RANGE
#undef REVERSE
#undef SUM
#undef SUM_CHECKED
#undef COUNT
#undef EQUALS
#undef ADD
#undef COPY
#undef SORT
#undef SORT_DELEGATE
#undef COMPARISON
#undef SUMS
#undef EQUALITIES
#undef ADDITIONS
#undef COPIES
#undef SORTS
#undef SORT_BY
#undef DELEGATE_SORTS

REALmoduleDefinition gModule = [] {
  REALmoduleDefinition module = {};
  module.version = 15;
  module.name = "SortZKT";
  module.methods = gMethods;
  module.methodCount = std::size(gMethods);
  module.delegates = gDelegates;
  module.delegateCount = std::size(gDelegates);
  module.flags = kConsoleSafe;
  return module;
}();

}  // namespace

REALmoduleDefinition* SortModule() { return &gModule; }

}  // namespace zkt
