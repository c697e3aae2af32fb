// The "SortZKT" module, which contains all array functions. Each function is declared as an extension method of arrays.
// Most are also declared as ordinary methods with the array as the first parameter.
#include <iterator>

#include "arrays/add.h"
#include "arrays/copy.h"
#include "arrays/count_value.h"
#include "arrays/equals.h"
#include "arrays/reverse.h"
#include "arrays/sort.h"
#include "arrays/sort_delegate.h"
#include "arrays/sum.h"
#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "frame/catalogue/tables.h"

namespace zkt {

namespace {

// clang-format off
REALmethodDefinition gMethods[] = {
    // Reverse
    Method("ReverseZKT(extends theArray() as Boolean)",  ReverseZKT_Boolean,  kGlobal),
    Method("ReverseZKT(extends theArray() as Color)",    ReverseZKT_Color,    kGlobal),
    Method("ReverseZKT(extends theArray() as Currency)", ReverseZKT_Currency, kGlobal),
    Method("ReverseZKT(extends theArray() as Date)",     ReverseZKT_Date,     kGlobalDesktopWebConsole),
    Method("ReverseZKT(extends theArray() as Double)",   ReverseZKT_Double,   kGlobal),
    Method("ReverseZKT(extends theArray() as Int32)",    ReverseZKT_Int32,    kGlobal),
    Method("ReverseZKT(extends theArray() as Int64)",    ReverseZKT_Int64,    kGlobal),
    Method("ReverseZKT(extends theArray() as Ptr)",      ReverseZKT_Ptr,      kGlobal),
    Method("ReverseZKT(extends theArray() as Single)",   ReverseZKT_Single,   kGlobal),
    Method("ReverseZKT(extends theArray() as String)",   ReverseZKT_String,   kGlobal),
    Method("ReverseZKT(extends theArray() as UInt32)",   ReverseZKT_UInt32,   kGlobal),
    Method("ReverseZKT(extends theArray() as UInt64)",   ReverseZKT_UInt64,   kGlobal),
    Method("ReverseZKT(extends theArray() as Variant)",  ReverseZKT_Variant,  kGlobal),
    Method("ReverseZKT(extends theArray() as Object)",   ReverseZKT_Object,   kGlobal),

    // Sum
    Method("SumArrayZKT(source() as Boolean, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Int64",                                       SumArrayZKT_Boolean,  kGlobal),
    Method("SumArrayZKT(source() as Currency, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as Currency", SumArrayZKT_Currency, kGlobal),
    Method("SumArrayZKT(source() as Int32, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Int64",                                         SumArrayZKT_Int32,    kGlobal),
    Method("SumArrayZKT(source() as Int64, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as Int64",       SumArrayZKT_Int64,    kGlobal),
    Method("SumArrayZKT(source() as UInt32, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as UInt64",     SumArrayZKT_UInt32,   kGlobal),
    Method("SumArrayZKT(source() as UInt64, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as UInt64",     SumArrayZKT_UInt64,   kGlobal),
    Method("SumArrayZKT(source() as Double, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Double",                                       SumArrayZKT_Double,   kGlobal),
    Method("SumArrayZKT(source() as Single, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Double",                                       SumArrayZKT_Single,   kGlobal),
    Method("SumZKT(extends source() as Boolean, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Int64",                                       SumArrayZKT_Boolean,  kGlobal),
    Method("SumZKT(extends source() as Currency, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as Currency", SumArrayZKT_Currency, kGlobal),
    Method("SumZKT(extends source() as Int32, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Int64",                                         SumArrayZKT_Int32,    kGlobal),
    Method("SumZKT(extends source() as Int64, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as Int64",       SumArrayZKT_Int64,    kGlobal),
    Method("SumZKT(extends source() as UInt32, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as UInt64",     SumArrayZKT_UInt32,   kGlobal),
    Method("SumZKT(extends source() as UInt64, sourceIndex as Integer = 0, sourceCount as Integer = -2, CheckOverflow as Boolean = false) as UInt64",     SumArrayZKT_UInt64,   kGlobal),
    Method("SumZKT(extends source() as Double, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Double",                                       SumArrayZKT_Double,   kGlobal),
    Method("SumZKT(extends source() as Single, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Double",                                       SumArrayZKT_Single,   kGlobal),

    // Count a value
    Method("CountValueZKT(extends source() as Boolean, value as Boolean, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",   CountValueZKT_Boolean,  kGlobal),
    Method("CountValueZKT(extends source() as Currency, value as Currency, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer", CountValueZKT_Currency, kGlobal),
    Method("CountValueZKT(extends source() as Int32, value as Int32, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",       CountValueZKT_Int32,    kGlobal),
    Method("CountValueZKT(extends source() as Int64, value as Int64, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",       CountValueZKT_Int64,    kGlobal),
    Method("CountValueZKT(extends source() as UInt32, value as UInt32, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",     CountValueZKT_UInt32,   kGlobal),
    Method("CountValueZKT(extends source() as UInt64, value as UInt64, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",     CountValueZKT_UInt64,   kGlobal),
    Method("CountValueZKT(extends source() as Double, value as Double, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",     CountValueZKT_Double,   kGlobal),
    Method("CountValueZKT(extends source() as Single, value as Single, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",     CountValueZKT_Single,   kGlobal),
    Method("CountValueZKT(extends source() as Ptr, value as Ptr, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",           CountValueZKT_Ptr,      kGlobal),
    Method("CountValueZKT(extends source() as String, value as String, sourceIndex as Integer = 0, sourceCount as Integer = -2) as Integer",     CountValueZKT_String,   kGlobal),

    // Compare
    Method("EqualsArrayZKT(array1() as Boolean, array2() as Boolean, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",   EqualsArrayZKT_Boolean,  kGlobal),
    Method("EqualsArrayZKT(array1() as Color, array2() as Color, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",       EqualsArrayZKT_Color,    kGlobal),
    Method("EqualsArrayZKT(array1() as Currency, array2() as Currency, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean", EqualsArrayZKT_Currency, kGlobal),
    Method("EqualsArrayZKT(array1() as Double, array2() as Double, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_Double,   kGlobal),
    Method("EqualsArrayZKT(array1() as Int32, array2() as Int32, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",       EqualsArrayZKT_Int32,    kGlobal),
    Method("EqualsArrayZKT(array1() as Int64, array2() as Int64, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",       EqualsArrayZKT_Int64,    kGlobal),
    Method("EqualsArrayZKT(array1() as Ptr, array2() as Ptr, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",           EqualsArrayZKT_Ptr,      kGlobal),
    Method("EqualsArrayZKT(array1() as Single, array2() as Single, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_Single,   kGlobal),
    Method("EqualsArrayZKT(array1() as String, array2() as String, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_String,   kGlobal),
    Method("EqualsArrayZKT(array1() as UInt32, array2() as UInt32, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_UInt32,   kGlobal),
    Method("EqualsArrayZKT(array1() as UInt64, array2() as UInt64, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_UInt64,   kGlobal),
    Method("EqualsZKT(extends array1() as Boolean, array2() as Boolean, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",   EqualsArrayZKT_Boolean,  kGlobal),
    Method("EqualsZKT(extends array1() as Color, array2() as Color, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",       EqualsArrayZKT_Color,    kGlobal),
    Method("EqualsZKT(extends array1() as Currency, array2() as Currency, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean", EqualsArrayZKT_Currency, kGlobal),
    Method("EqualsZKT(extends array1() as Double, array2() as Double, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_Double,   kGlobal),
    Method("EqualsZKT(extends array1() as Int32, array2() as Int32, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",       EqualsArrayZKT_Int32,    kGlobal),
    Method("EqualsZKT(extends array1() as Int64, array2() as Int64, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",       EqualsArrayZKT_Int64,    kGlobal),
    Method("EqualsZKT(extends array1() as Ptr, array2() as Ptr, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",           EqualsArrayZKT_Ptr,      kGlobal),
    Method("EqualsZKT(extends array1() as Single, array2() as Single, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_Single,   kGlobal),
    Method("EqualsZKT(extends array1() as String, array2() as String, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_String,   kGlobal),
    Method("EqualsZKT(extends array1() as UInt32, array2() as UInt32, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_UInt32,   kGlobal),
    Method("EqualsZKT(extends array1() as UInt64, array2() as UInt64, array1offset as Integer = 0, count as Integer = -2, array2offset as Integer = 0) as Boolean",     EqualsArrayZKT_UInt64,   kGlobal),

    // Append
    Method("AddArrayZKT(array1() as Boolean, array2() as Boolean)",   AddArrayZKT_Boolean,  kGlobal),
    Method("AddArrayZKT(array1() as Color, array2() as Color)",       AddArrayZKT_Color,    kGlobal),
    Method("AddArrayZKT(array1() as Currency, array2() as Currency)", AddArrayZKT_Currency, kGlobal),
    Method("AddArrayZKT(array1() as Double, array2() as Double)",     AddArrayZKT_Double,   kGlobal),
    Method("AddArrayZKT(array1() as Int32, array2() as Int32)",       AddArrayZKT_Int32,    kGlobal),
    Method("AddArrayZKT(array1() as Int64, array2() as Int64)",       AddArrayZKT_Int64,    kGlobal),
    Method("AddArrayZKT(array1() as Ptr, array2() as Ptr)",           AddArrayZKT_Ptr,      kGlobal),
    Method("AddArrayZKT(array1() as Single, array2() as Single)",     AddArrayZKT_Single,   kGlobal),
    Method("AddArrayZKT(array1() as String, array2() as String)",     AddArrayZKT_String,   kGlobal),
    Method("AddArrayZKT(array1() as UInt32, array2() as UInt32)",     AddArrayZKT_UInt32,   kGlobal),
    Method("AddArrayZKT(array1() as UInt64, array2() as UInt64)",     AddArrayZKT_UInt64,   kGlobal),
    Method("AddArrayZKT(array1() as Object, array2() as Object)",     AddArrayZKT_Object,   kGlobal),
    Method("AddArrayZKT(array1() as Date, array2() as Date)",         AddArrayZKT_Date,     kGlobalDesktopWebConsole),
    Method("AddArrayZKT(array1() as Variant, array2() as Variant)",   AddArrayZKT_Variant,  kGlobal),
    Method("AddZKT(extends array1() as Boolean, array2() as Boolean)",   AddArrayZKT_Boolean,  kGlobal),
    Method("AddZKT(extends array1() as Color, array2() as Color)",       AddArrayZKT_Color,    kGlobal),
    Method("AddZKT(extends array1() as Currency, array2() as Currency)", AddArrayZKT_Currency, kGlobal),
    Method("AddZKT(extends array1() as Double, array2() as Double)",     AddArrayZKT_Double,   kGlobal),
    Method("AddZKT(extends array1() as Int32, array2() as Int32)",       AddArrayZKT_Int32,    kGlobal),
    Method("AddZKT(extends array1() as Int64, array2() as Int64)",       AddArrayZKT_Int64,    kGlobal),
    Method("AddZKT(extends array1() as Ptr, array2() as Ptr)",           AddArrayZKT_Ptr,      kGlobal),
    Method("AddZKT(extends array1() as Single, array2() as Single)",     AddArrayZKT_Single,   kGlobal),
    Method("AddZKT(extends array1() as String, array2() as String)",     AddArrayZKT_String,   kGlobal),
    Method("AddZKT(extends array1() as UInt32, array2() as UInt32)",     AddArrayZKT_UInt32,   kGlobal),
    Method("AddZKT(extends array1() as UInt64, array2() as UInt64)",     AddArrayZKT_UInt64,   kGlobal),
    Method("AddZKT(extends array1() as Object, array2() as Object)",     AddArrayZKT_Object,   kGlobal),
    Method("AddZKT(extends array1() as Date, array2() as Date)",         AddArrayZKT_Date,     kGlobalDesktopWebConsole),
    Method("AddZKT(extends array1() as Variant, array2() as Variant)",   AddArrayZKT_Variant,  kGlobal),

    // Copy
    Method("CopyArrayZKT(source() as Boolean, dest() as Boolean, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",   CopyArrayZKT_Boolean,  kGlobal),
    Method("CopyArrayZKT(source() as Color, dest() as Color, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",       CopyArrayZKT_Color,    kGlobal),
    Method("CopyArrayZKT(source() as Currency, dest() as Currency, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)", CopyArrayZKT_Currency, kGlobal),
    Method("CopyArrayZKT(source() as Double, dest() as Double, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_Double,   kGlobal),
    Method("CopyArrayZKT(source() as Int32, dest() as Int32, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",       CopyArrayZKT_Int32,    kGlobal),
    Method("CopyArrayZKT(source() as Int64, dest() as Int64, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",       CopyArrayZKT_Int64,    kGlobal),
    Method("CopyArrayZKT(source() as Ptr, dest() as Ptr, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",           CopyArrayZKT_Ptr,      kGlobal),
    Method("CopyArrayZKT(source() as Single, dest() as Single, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_Single,   kGlobal),
    Method("CopyArrayZKT(source() as String, dest() as String, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_String,   kGlobal),
    Method("CopyArrayZKT(source() as UInt32, dest() as UInt32, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_UInt32,   kGlobal),
    Method("CopyArrayZKT(source() as UInt64, dest() as UInt64, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_UInt64,   kGlobal),
    Method("CopyArrayZKT(source() as Variant, dest() as Variant, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",   CopyArrayZKT_Variant,  kGlobal),
    Method("CopyArrayZKT(source() as Object, dest() as Object, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_Object,   kGlobal),
    Method("CopyZKT(extends source() as Boolean, dest() as Boolean, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",   CopyArrayZKT_Boolean,  kGlobal),
    Method("CopyZKT(extends source() as Color, dest() as Color, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",       CopyArrayZKT_Color,    kGlobal),
    Method("CopyZKT(extends source() as Currency, dest() as Currency, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)", CopyArrayZKT_Currency, kGlobal),
    Method("CopyZKT(extends source() as Double, dest() as Double, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_Double,   kGlobal),
    Method("CopyZKT(extends source() as Int32, dest() as Int32, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",       CopyArrayZKT_Int32,    kGlobal),
    Method("CopyZKT(extends source() as Int64, dest() as Int64, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",       CopyArrayZKT_Int64,    kGlobal),
    Method("CopyZKT(extends source() as Ptr, dest() as Ptr, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",           CopyArrayZKT_Ptr,      kGlobal),
    Method("CopyZKT(extends source() as Single, dest() as Single, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_Single,   kGlobal),
    Method("CopyZKT(extends source() as String, dest() as String, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_String,   kGlobal),
    Method("CopyZKT(extends source() as UInt32, dest() as UInt32, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_UInt32,   kGlobal),
    Method("CopyZKT(extends source() as UInt64, dest() as UInt64, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_UInt64,   kGlobal),
    Method("CopyZKT(extends source() as Variant, dest() as Variant, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",   CopyArrayZKT_Variant,  kGlobal),
    Method("CopyZKT(extends source() as Object, dest() as Object, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",     CopyArrayZKT_Object,   kGlobal),

    // Sort
    Method("SortArrayZKT(theArray() as Boolean, descending as boolean = false)",  SortArrayZKT_Boolean,  kGlobal),
    Method("SortArrayZKT(theArray() as Color, descending as boolean = false)",    SortArrayZKT_Color,    kGlobal),
    Method("SortArrayZKT(theArray() as Currency, descending as boolean = false)", SortArrayZKT_Currency, kGlobal),
    Method("SortArrayZKT(theArray() as Date, descending as boolean = false)",     SortArrayZKT_Date,     kGlobalDesktopWebConsole),
    Method("SortArrayZKT(theArray() as Double, descending as boolean = false)",   SortArrayZKT_Double,   kGlobal),
    Method("SortArrayZKT(theArray() as Int32, descending as boolean = false)",    SortArrayZKT_Int32,    kGlobal),
    Method("SortArrayZKT(theArray() as Int64, descending as boolean = false)",    SortArrayZKT_Int64,    kGlobal),
    Method("SortArrayZKT(theArray() as Ptr, descending as boolean = false)",      SortArrayZKT_Ptr,      kGlobal),
    Method("SortArrayZKT(theArray() as Single, descending as boolean = false)",   SortArrayZKT_Single,   kGlobal),
    Method("SortArrayZKT(theArray() as String, descending as boolean = false)",   SortArrayZKT_String,   kGlobal),
    Method("SortArrayZKT(theArray() as UInt32, descending as boolean = false)",   SortArrayZKT_UInt32,   kGlobal),
    Method("SortArrayZKT(theArray() as UInt64, descending as boolean = false)",   SortArrayZKT_UInt64,   kGlobal),
    Method("SortZKT(extends theArray() as Boolean, descending as boolean = false)",  SortArrayZKT_Boolean,  kGlobal),
    Method("SortZKT(extends theArray() as Color, descending as boolean = false)",    SortArrayZKT_Color,    kGlobal),
    Method("SortZKT(extends theArray() as Currency, descending as boolean = false)", SortArrayZKT_Currency, kGlobal),
    Method("SortZKT(extends theArray() as Date, descending as boolean = false)",     SortArrayZKT_Date,     kGlobalDesktopWebConsole),
    Method("SortZKT(extends theArray() as Double, descending as boolean = false)",   SortArrayZKT_Double,   kGlobal),
    Method("SortZKT(extends theArray() as Int32, descending as boolean = false)",    SortArrayZKT_Int32,    kGlobal),
    Method("SortZKT(extends theArray() as Int64, descending as boolean = false)",    SortArrayZKT_Int64,    kGlobal),
    Method("SortZKT(extends theArray() as Ptr, descending as boolean = false)",      SortArrayZKT_Ptr,      kGlobal),
    Method("SortZKT(extends theArray() as Single, descending as boolean = false)",   SortArrayZKT_Single,   kGlobal),
    Method("SortZKT(extends theArray() as String, descending as boolean = false)",   SortArrayZKT_String,   kGlobal),
    Method("SortZKT(extends theArray() as UInt32, descending as boolean = false)",   SortArrayZKT_UInt32,   kGlobal),
    Method("SortZKT(extends theArray() as UInt64, descending as boolean = false)",   SortArrayZKT_UInt64,   kGlobal),

    // Sort by a delegate
    Method("SortArrayZKT(theArray() as Boolean, theDelegate as SortVariantDelegateBooleanZKT, descending as boolean = false)",   SortArrayZKT_BooleanDel,  kGlobal),
    Method("SortArrayZKT(theArray() as Color, theDelegate as SortVariantDelegateColorZKT, descending as boolean = false)",       SortArrayZKT_ColorDel,    kGlobal),
    Method("SortArrayZKT(theArray() as Currency, theDelegate as SortVariantDelegateCurrencyZKT, descending as boolean = false)", SortArrayZKT_CurrencyDel, kGlobal),
    Method("SortArrayZKT(theArray() as Double, theDelegate as SortVariantDelegateDoubleZKT, descending as boolean = false)",     SortArrayZKT_DoubleDel,   kGlobal),
    Method("SortArrayZKT(theArray() as Int32, theDelegate as SortVariantDelegateInt32ZKT, descending as boolean = false)",       SortArrayZKT_Int32Del,    kGlobal),
    Method("SortArrayZKT(theArray() as Int64, theDelegate as SortVariantDelegateInt64ZKT, descending as boolean = false)",       SortArrayZKT_Int64Del,    kGlobal),
    Method("SortArrayZKT(theArray() as Variant, theDelegate as SortVariantDelegateVariantZKT, descending as boolean = false)",   SortArrayZKT_ObjectDel,   kGlobal),
    Method("SortArrayZKT(theArray() as Ptr, theDelegate as SortVariantDelegatePtrZKT, descending as boolean = false)",           SortArrayZKT_PtrDel,      kGlobal),
    Method("SortArrayZKT(theArray() as Single, theDelegate as SortVariantDelegateSingleZKT, descending as boolean = false)",     SortArrayZKT_SingleDel,   kGlobal),
    Method("SortArrayZKT(theArray() as String, theDelegate as SortVariantDelegateStringZKT, descending as boolean = false)",     SortArrayZKT_StringDel,   kGlobal),
    Method("SortArrayZKT(theArray() as UInt32, theDelegate as SortVariantDelegateUInt32ZKT, descending as boolean = false)",     SortArrayZKT_UInt32Del,   kGlobal),
    Method("SortArrayZKT(theArray() as UInt64, theDelegate as SortVariantDelegateUInt64ZKT, descending as boolean = false)",     SortArrayZKT_UInt64Del,   kGlobal),
    Method("SortZKT(extends theArray() as Boolean, theDelegate as SortVariantDelegateBooleanZKT, descending as boolean = false)",   SortArrayZKT_BooleanDel,  kGlobal),
    Method("SortZKT(extends theArray() as Color, theDelegate as SortVariantDelegateColorZKT, descending as boolean = false)",       SortArrayZKT_ColorDel,    kGlobal),
    Method("SortZKT(extends theArray() as Currency, theDelegate as SortVariantDelegateCurrencyZKT, descending as boolean = false)", SortArrayZKT_CurrencyDel, kGlobal),
    Method("SortZKT(extends theArray() as Double, theDelegate as SortVariantDelegateDoubleZKT, descending as boolean = false)",     SortArrayZKT_DoubleDel,   kGlobal),
    Method("SortZKT(extends theArray() as Int32, theDelegate as SortVariantDelegateInt32ZKT, descending as boolean = false)",       SortArrayZKT_Int32Del,    kGlobal),
    Method("SortZKT(extends theArray() as Int64, theDelegate as SortVariantDelegateInt64ZKT, descending as boolean = false)",       SortArrayZKT_Int64Del,    kGlobal),
    Method("SortZKT(extends theArray() as Variant, theDelegate as SortVariantDelegateVariantZKT, descending as boolean = false)",   SortArrayZKT_ObjectDel,   kGlobal),
    Method("SortZKT(extends theArray() as Ptr, theDelegate as SortVariantDelegatePtrZKT, descending as boolean = false)",           SortArrayZKT_PtrDel,      kGlobal),
    Method("SortZKT(extends theArray() as Single, theDelegate as SortVariantDelegateSingleZKT, descending as boolean = false)",     SortArrayZKT_SingleDel,   kGlobal),
    Method("SortZKT(extends theArray() as String, theDelegate as SortVariantDelegateStringZKT, descending as boolean = false)",     SortArrayZKT_StringDel,   kGlobal),
    Method("SortZKT(extends theArray() as UInt32, theDelegate as SortVariantDelegateUInt32ZKT, descending as boolean = false)",     SortArrayZKT_UInt32Del,   kGlobal),
    Method("SortZKT(extends theArray() as UInt64, theDelegate as SortVariantDelegateUInt64ZKT, descending as boolean = false)",     SortArrayZKT_UInt64Del,   kGlobal),

    // Rows that are removed on hosts before 2019 release 2: those that such hosts cannot compile, and those for copying
    // Date arrays.
    Method("SortArrayZKT(theArray() as DateTime, theDelegate as SortVariantDelegateDateTimeZKT, descending as boolean = false)",                           SortArrayZKT_DateTimeDel, kGlobal | kNeedsHost2019r2),
    Method("SortArrayZKT(theArray() as DateTime, descending as boolean = false)",                                                                          SortArrayZKT_DateTime,    kGlobal | kNeedsHost2019r2),
    Method("SortZKT(extends theArray() as DateTime, theDelegate as SortVariantDelegateDateTimeZKT, descending as boolean = false)",                        SortArrayZKT_DateTimeDel, kGlobal | kNeedsHost2019r2),
    Method("SortZKT(extends theArray() as DateTime, descending as boolean = false)",                                                                       SortArrayZKT_DateTime,    kGlobal | kNeedsHost2019r2),
    Method("ReverseZKT(extends theArray() as DateTime)",                                                                                                   ReverseZKT_DateTime,      kGlobal | kNeedsHost2019r2),
    Method("AddArrayZKT(array1() as DateTime, array2() as DateTime)",                                                                                      AddArrayZKT_DateTime,     kGlobal | kNeedsHost2019r2),
    Method("AddZKT(extends array1() as DateTime, array2() as DateTime)",                                                                                   AddArrayZKT_DateTime,     kGlobal | kNeedsHost2019r2),
    Method("CopyArrayZKT(source() as Date, dest() as Date, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",            CopyArrayZKT_Date,        kGlobalDesktopWebConsole | kNeedsHost2019r2),
    Method("CopyArrayZKT(source() as DateTime, dest() as DateTime, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",    CopyArrayZKT_DateTime,    kGlobal | kNeedsHost2019r2),
    Method("CopyZKT(extends source() as Date, dest() as Date, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)",         CopyArrayZKT_Date,        kGlobalDesktopWebConsole | kNeedsHost2019r2),
    Method("CopyZKT(extends source() as DateTime, dest() as DateTime, sourceIndex as Integer = 0, sourceCount as Integer = -2, destIndex as Integer = 0)", CopyArrayZKT_DateTime,    kGlobal | kNeedsHost2019r2),
};

REALdelegate gDelegates[] = {
    Delegate<std::int64_t(REALobject, REALobject)>("SortVariantDelegateVariantZKT(v1 as Variant, v2 as Variant) as Integer",     kAllProjects),
    Delegate<std::int64_t(REALstring, REALstring)>("SortVariantDelegateStringZKT(v1 as String, v2 as String) as Integer",        kAllProjects),
    Delegate<std::int64_t(float, float)>         ("SortVariantDelegateSingleZKT(v1 as Single, v2 as Single) as Integer",        kAllProjects),
    Delegate<std::int64_t(double, double)>       ("SortVariantDelegateDoubleZKT(v1 as Double, v2 as Double) as Integer",        kAllProjects),
    Delegate<std::int64_t(std::int32_t, std::int32_t)>("SortVariantDelegateInt32ZKT(v1 as Int32, v2 as Int32) as Integer",           kAllProjects),
    Delegate<std::int64_t(std::int64_t, std::int64_t)>("SortVariantDelegateInt64ZKT(v1 as Int64, v2 as Int64) as Integer",           kAllProjects),
    Delegate<std::int64_t(std::uint32_t, std::uint32_t)>("SortVariantDelegateUInt32ZKT(v1 as UInt32, v2 as UInt32) as Integer",        kAllProjects),
    Delegate<std::int64_t(std::uint64_t, std::uint64_t)>("SortVariantDelegateUInt64ZKT(v1 as UInt64, v2 as UInt64) as Integer",        kAllProjects),
    Delegate<std::int64_t(REALcolor, REALcolor)> ("SortVariantDelegateColorZKT(v1 as Color, v2 as Color) as Integer",           kAllProjects),
    Delegate<std::int64_t(REALboolean, REALboolean)>("SortVariantDelegateBooleanZKT(v1 as Boolean, v2 as Boolean) as Integer",     kAllProjects),
    Delegate<std::int64_t(REALcurrency, REALcurrency)>("SortVariantDelegateCurrencyZKT(v1 as Currency, v2 as Currency) as Integer",  kAllProjects),
    Delegate<std::int64_t(void*, void*)>         ("SortVariantDelegatePtrZKT(v1 as Ptr, v2 as Ptr) as Integer",                 kAllProjects),
    Delegate<std::int64_t(REALdateTime, REALdateTime)>("SortVariantDelegateDateTimeZKT(v1 as DateTime, v2 as DateTime) as Integer",  kAllProjects | kNeedsHost2019r2),
};
// clang-format on

REALmoduleDefinition gModule = {
    .version = kCurrentREALControlVersion,
    .name = "SortZKT",
    .methods = gMethods,
    .methodCount = std::size(gMethods),
    .delegates = gDelegates,
    .delegateCount = std::size(gDelegates),
    .flags = kAllProjects,
};

}  // namespace

REALmoduleDefinition* SortModule() { return &gModule; }

}  // namespace zkt
