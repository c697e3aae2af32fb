// The global methods.
#include "csv/split_csv.h"
#include "frame/catalogue.h"

namespace zkt {

namespace {

REALmethodDefinition Method(const char* declaration, auto* function, std::uint32_t flags) {
  return {reinterpret_cast<void*>(function), nullptr, declaration, flags, 0, nullptr};
}

// clang-format off
REALmethodDefinition gMethods[] = {
    Method("SplitCommaSeparatedValuesZKT(text as string, delimiter as string = \"\", quote as string = \"\") as string()", SplitCSV, 0x4),
};
// clang-format on

}  // namespace

std::span<REALmethodDefinition> GlobalMethods() { return gMethods; }

}  // namespace zkt
