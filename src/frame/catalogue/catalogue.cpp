// The registration order of classes and modules.
#include "frame/catalogue/catalogue.h"

#include "frame/catalogue/tables.h"

namespace zkt {

std::span<const ClassOrModule> DeclarationsSince2013() {
  static const ClassOrModule declarations[] = {DelegateCrashExceptionClass(), CrashSafeModule(), SortModule()};
  return declarations;
}

std::span<REALclassDefinition* const> Classes() {
  static REALclassDefinition* const classes[] = {LocaleClass(), DateDifferenceClass()};
  return classes;
}

}  // namespace zkt
