// The global methods.
#include "csv/split_csv.h"
#include "frame/catalogue.h"
#include "frame/rows.h"

namespace zkt {

namespace {

// clang-format off
REALmethodDefinition gMethods[] = {
    Method("SplitCommaSeparatedValuesZKT(text as string, delimiter as string = \"\", quote as string = \"\") as string()", SplitCSV, 0x4),
};
// clang-format on

}  // namespace

std::span<REALmethodDefinition> GlobalMethods() { return gMethods; }

}  // namespace zkt
