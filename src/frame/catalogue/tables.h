// The catalogue's tables. Each table is in its own file.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

REALclassDefinition* DelegateCrashExceptionClass();
REALmoduleDefinition* CrashSafeModule();
REALmoduleDefinition* SortModule();
REALclassDefinition* LocaleClass();
REALclassDefinition* DateDifferenceClass();

}  // namespace zkt
