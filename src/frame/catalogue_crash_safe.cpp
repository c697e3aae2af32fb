// The exception class of a delegate that crashes, and the module "CallDelegateCrashSafeZKT".
#include <iterator>

#include "frame/catalogue_tables.h"
#include "frame/rows.h"
#include "process/backtrace.h"
#include "process/crash_safe_call.h"
#include "runtime/debug_log.h"

namespace zkt {

REALclassDefinition* DelegateCrashExceptionClass() {
  static REALclassDefinition definition = [] {
    REALclassDefinition exception = {};
    exception.version = 15;
    exception.name = "DelegateCrashExceptionZKT";
    exception.superName = "RuntimeException";
    exception.flags = kConsoleSafe;
    return exception;
  }();
  return &definition;
}

// Made at the first call: the row of the debug switch, of which this is a copy, is made in another file.
REALmoduleDefinition* CrashSafeModule() {
  // clang-format off
  static REALmethodDefinition methods[] = {
      Method("PrintBacktraceZKT", PrintBacktrace, 0x14),
      Method("CallDelegateCrashSafeZKT(m as DelegateCrashSafeZKT)", CallDelegateCrash, 0x14),
  };
  static REALproperty properties[] = {
      SharedProperty<std::int64_t>("CrashCounter", "Integer", getCrashCounter, nullptr, 0x26),
      SharedProperty<std::int64_t>("CallCounter",  "Integer", getCallCounter,  nullptr, 0x26),
      kDebuggingProperty,
  };
  static REALdelegate delegates[] = {
      Delegate<void()>("DelegateCrashSafeZKT()", 0x14),
  };
  // clang-format on
  static REALmoduleDefinition definition = [] {
    REALmoduleDefinition module = {};
    module.version = 15;
    module.name = "CallDelegateCrashSafeZKT";
    module.methods = methods;
    module.methodCount = std::size(methods);
    module.properties = properties;
    module.propertyCount = std::size(properties);
    module.delegates = delegates;
    module.delegateCount = std::size(delegates);
    module.flags = kConsoleSafe;
    return module;
  }();
  return &definition;
}

}  // namespace zkt
