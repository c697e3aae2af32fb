// The exception class for a crashed delegate, and the "CallDelegateCrashSafeZKT" module.
#include <iterator>

#include "frame/catalogue/debugging_property.h"
#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "frame/catalogue/tables.h"
#include "process/backtrace.h"
#include "process/crash_safe_call.h"

namespace zkt {

namespace {

REALclassDefinition gExceptionClass = {
    .version = kCurrentREALControlVersion,
    .name = "DelegateCrashExceptionZKT",
    .superName = "RuntimeException",
    .flags = kAllProjects,
};

// clang-format off
REALmethodDefinition gMethods[] = {
    Method("PrintBacktraceZKT",                                   PrintBacktrace,    kGlobal),
    Method("CallDelegateCrashSafeZKT(m as DelegateCrashSafeZKT)", CallDelegateCrash, kGlobal),
};

REALproperty gProperties[] = {
    SharedProperty<std::int64_t>("CrashCounter", "Integer", getCrashCounter, nullptr, kPropertyWithoutObject),
    SharedProperty<std::int64_t>("CallCounter",  "Integer", getCallCounter,  nullptr, kPropertyWithoutObject),
    DebuggingProperty(),
};

REALdelegate gDelegates[] = {
    Delegate<void()>("DelegateCrashSafeZKT()", kGlobal),
};
// clang-format on

REALmoduleDefinition gModule = {
    .version = kCurrentREALControlVersion,
    .name = "CallDelegateCrashSafeZKT",
    .methods = gMethods,
    .methodCount = std::size(gMethods),
    .properties = gProperties,
    .propertyCount = std::size(gProperties),
    .delegates = gDelegates,
    .delegateCount = std::size(gDelegates),
    .flags = kAllProjects,
};

}  // namespace

REALclassDefinition* DelegateCrashExceptionClass() { return &gExceptionClass; }

REALmoduleDefinition* CrashSafeModule() { return &gModule; }

}  // namespace zkt
