// The tables of the catalogue, each in a file of its own.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

REALclassDefinition* DelegateCrashExceptionClass();
REALmoduleDefinition* CrashSafeModule();
REALmoduleDefinition* SortModule();
REALclassDefinition* LocaleClass();
REALclassDefinition* DateDifferenceClass();

}  // namespace zkt
