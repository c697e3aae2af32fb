// The tables of the catalogue. Each one is in its own file.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

REALclassDefinition* DelegateCrashExceptionClass();
REALmoduleDefinition* CrashSafeModule();
REALmoduleDefinition* SortModule();
REALclassDefinition* LocaleClass();
REALclassDefinition* DateDifferenceClass();

}  // namespace zkt
