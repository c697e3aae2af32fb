// The order of registration of classes and modules.
#include "frame/catalogue.h"

#include "dates/date_difference.h"
#include "frame/catalogue_tables.h"
#include "locale/locale_class.h"

namespace zkt {

std::span<const ClassOrModule> DeclarationsSince2013() {
  static const ClassOrModule declarations[] = {DelegateCrashExceptionClass(), CrashSafeModule(), SortModule()};
  return declarations;
}

std::span<REALclassDefinition* const> Classes() {
  static REALclassDefinition* const classes[] = {&gLocaleClass, &gDateDifferenceClass};
  return classes;
}

}  // namespace zkt
