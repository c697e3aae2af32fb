// The global methods.
#include "csv/split_csv.h"
#include "dates/date_difference.h"
#include "frame/catalogue.h"
#include "frame/rows.h"

namespace zkt {

namespace {

// clang-format off
REALmethodDefinition gMethods[] = {
    Method("SplitCommaSeparatedValuesZKT(text as string, delimiter as string = \"\", quote as string = \"\") as string()", SplitCSV, 0x4),
    Method("DifferenceZKT(extends StartDate as date, EndDate as date) as DateDifferenceZKT", DifferenceZKT, 0x308),
    Method("DifferenceZKT(extends StartDate as dateTime, EndDate as dateTime) as DateDifferenceZKT", DifferenceZKTdt, 0x4 | kNeedsHost2019r2),
};
// clang-format on

}  // namespace

std::span<REALmethodDefinition> GlobalMethods() { return gMethods; }

}  // namespace zkt
