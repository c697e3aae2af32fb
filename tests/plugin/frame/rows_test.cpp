// Tests at compile time which declarations match which native functions. compile_fail_rows.cpp proves that each row
// maker checks its rows.
#include "frame/catalogue/rows.h"

#include <gtest/gtest.h>

#include <string>

#include "support/table.h"

namespace {

using zkt::CallKind;

template <class Signature>
constexpr bool Fits(std::string_view text) {
  return zkt::MatchesDeclaration<CallKind::kDeclaredOnly, Signature>(text);
}

template <class Signature>
constexpr bool FitsObject(std::string_view text) {
  return zkt::MatchesDeclaration<CallKind::kObjectFirst, Signature>(text);
}

// Covers every type by value, as an array element, and by reference.
static_assert(Fits<REALboolean(REALboolean)>("F(a as boolean) as BOOLEAN"));
static_assert(Fits<REALcolor(REALcolor)>("F(a as Color) as Color"));
static_assert(Fits<REALcurrency(REALcurrency)>("F(a as Currency) as Currency"));
static_assert(Fits<double(float)>("F(a as Single) as Double"));
static_assert(Fits<std::int64_t(std::int64_t)>("F(a as Integer) as Int64"));
static_assert(Fits<std::uint64_t(std::uint32_t)>("F(a as UInt32) as UInt64"));
static_assert(Fits<std::int32_t(void*)>("F(a as Ptr) as Int32"));
static_assert(Fits<REALstring(REALdate, REALdateTime)>("F(a as date, b as dateTime) as string"));
static_assert(Fits<REALobject(REALobject, REALfolderItem)>("F(a as Variant, b as folderitem) as DateDifferenceZKT"));
static_assert(Fits<_REALarrayString*(_REALarrayInt32*)>("F(extends a() as Int32) as string()"));
static_assert(Fits<void(_REALarrayInt64*, _REALarrayVariant*)>("F(a() as Integer, b() as Variant)"));
static_assert(Fits<void(double*, REALdate*)>("F(byref a as double, byref b as date)"));
static_assert(Fits<std::int64_t()>("F as Integer"));
static_assert(Fits<void()>("F"));
static_assert(Fits<void()>("F()"));
static_assert(
    Fits<void(REALstring, std::int64_t, double)>("F(a as string = \"\", b as Integer = -2, c as double = 1.0)"));
static_assert(
    Fits<void(std::uint32_t, float, REALcurrency)>("F(a as UInt32 = 7, b as Single = -2, c as Currency = 0.5)"));
static_assert(Fits<void(REALboolean, REALobject, void*)>("F(a as Boolean = TRUE, b as Object = nil, c as Ptr = Nil)"));
static_assert(Fits<void(_REALarrayInt32*, REALdate)>("_F1(a() as Int32 = Nil, b as Date = Nil)"));
static_assert(Fits<void(REALobject, REALobject)>("F(a as Graphics, b as SortVariantDelegateInt32ZKT)"));

// Xojo types that correspond to the same C++ type are distinguished.
static_assert(!Fits<void(std::int64_t)>("F(a as Currency)"));
static_assert(!Fits<void(REALcurrency)>("F(a as Int64)"));
static_assert(!Fits<void(std::uint32_t)>("F(a as Color)"));
static_assert(!Fits<void(REALobject)>("F(a as Date)"));
static_assert(!Fits<void(REALobject)>("F(a as String)"));
static_assert(!Fits<void(std::uint32_t)>("F(a as Int32)"));
static_assert(!Fits<void(float)>("F(a as Double)"));
static_assert(!Fits<void(bool)>("F(a as Boolean)"));

// The type of a REALobject must be a known host class or one of the plug-in's classes.
static_assert(!Fits<void(REALobject)>("F(a as Intger)"));
static_assert(!Fits<void(REALobject)>("F(a as UInt8)"));
static_assert(!Fits<void(REALobject)>("F(a as CString)"));
static_assert(!Fits<void(REALobject)>("F(a as ZKTThing)"));
static_assert(!Fits<void(REALobject)>("F(a as ZKT)"));
static_assert(!Fits<REALobject()>("F as Objekt"));
static_assert(!Fits<void(REALobject*)>("F(byref a as Intger)"));

// Parameter counts, arrays, references, and results must match.
static_assert(!Fits<void(std::int64_t)>("F"));
static_assert(!Fits<void()>("F(a as Integer)"));
static_assert(!Fits<void(std::int32_t)>("F(a() as Int32)"));
static_assert(!Fits<void(_REALarrayInt32*)>("F(a as Int32)"));
static_assert(!Fits<void(_REALarrayInt32*)>("F(a() as UInt32)"));
static_assert(!Fits<void(double)>("F(byref a as double)"));
static_assert(!Fits<void(double*)>("F(a as double)"));
static_assert(!Fits<void()>("F as Integer"));
static_assert(!Fits<std::int64_t()>("F"));
static_assert(!Fits<_REALarrayString*()>("F as string"));

// A method of an object takes the object as its first parameter.
static_assert(FitsObject<void(REALobject)>("Constructor"));
static_assert(FitsObject<REALboolean(REALobject, REALdate, REALdate)>("Calc(a as date, b as date) as boolean"));
static_assert(!FitsObject<REALboolean(REALdate, REALdate)>("Calc(a as date, b as date) as boolean"));
static_assert(!FitsObject<void()>("Constructor"));
static_assert(!Fits<void(REALobject)>("Constructor"));

TEST(DeclarationSyntax, RejectsInvalidDeclarations) {
  for (const tests::Row& row : tests::ReadTable("plugin/frame/invalid_declarations.tsv", 2))
    EXPECT_STREQ(zkt::ParseDeclaration(row[0]).trouble, row[1].c_str()) << row[0];
}

TEST(DeclarationSyntax, ReadsEveryPart) {
  const auto read =
      zkt::ParseDeclaration("FZKT(extends a() as Int32, byref b as Double, text as string = \", )\") as String()");
  ASSERT_TRUE(read.IsValid()) << read.trouble;
  EXPECT_EQ(read.name, "FZKT");
  ASSERT_EQ(read.parameterCount, 3u);
  EXPECT_TRUE(read.parameters[0].isExtends && read.parameters[0].type.isArray);
  EXPECT_EQ(read.parameters[0].type.name, "Int32");
  EXPECT_TRUE(read.parameters[1].isByRef);
  EXPECT_EQ(read.parameters[1].name, "b");
  EXPECT_EQ(read.parameters[2].defaultValue, "\", )\"");
  EXPECT_EQ(read.result.name, "String");
  EXPECT_TRUE(read.result.isArray);
}

}  // namespace
