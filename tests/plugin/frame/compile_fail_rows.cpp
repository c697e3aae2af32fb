// A test compiles this file with each ROW in turn: row 0 must compile, and the others must not. Each row maker has one
// invalid row, which proves that the row maker checks its declarations. rows_test.cpp tests the check itself.
#include "frame/catalogue/rows.h"

std::int64_t Sum(_REALarrayInt32*, std::int64_t, REALboolean) { return 0; }
double GetWeight(REALobject, std::int64_t) { return 0; }

#if ROW == 0
auto row = zkt::Method("Sum(a() as Int32, b as Integer = 0, c as Boolean = false) as Int64", Sum, 0x14);
#elif ROW == 1
auto row = zkt::Method("Sum(a() as UInt32, b as Integer = 0, c as Boolean = false) as Int64", Sum, 0x14);
#elif ROW == 2
auto row = zkt::ObjectMethod("Sum(a() as Int32, b as Integer = 0, c as Boolean = false) as Int64", Sum, 0x14);
#elif ROW == 3
auto row = zkt::AccessorProperty("Weight", "Single", GetWeight, nullptr, 0x6);
#elif ROW == 4
auto row = zkt::Delegate<std::int64_t(double, double)>("Compare(a as Double, b as Single) as Integer", 0x4);
#elif ROW == 5
auto row = zkt::FieldProperty("Weight", "Double", zkt::InstanceField<double>{0}, zkt::kReadOnly, 0x6);
#endif
