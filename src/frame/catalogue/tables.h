// The catalogue's records of classes and modules.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

REALclassDefinition* DelegateCrashExceptionClass();
REALmoduleDefinition* CrashSafeModule();
REALmoduleDefinition* SortModule();
REALclassDefinition* LocaleClass();
REALclassDefinition* DateDifferenceClass();

}  // namespace zkt
