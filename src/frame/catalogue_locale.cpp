// The class LocaleZKT.
#include "frame/rows.h"
#include "locale/locale_class.h"

namespace zkt {

namespace {

// clang-format off
#define FIELD(name, type, place) \
  FieldProperty<decltype(LocaleData::place)>(name, type, offsetof(LocaleData, place), false, 0x6)
REALproperty gProperties[] = {
    FIELD("Name",               "String",  name),
    FIELD("DecimalPoint",       "String",  decimalPoint),
    FIELD("ThousandsSep",       "String",  thousandsSep),
    FIELD("Grouping",           "String",  grouping),
    FIELD("IntCurrSymbol",      "String",  intCurrSymbol),
    FIELD("CurrencySymbol",     "String",  currencySymbol),
    FIELD("monDecimalPoint",    "String",  monDecimalPoint),
    FIELD("monThousandsSep",    "String",  monThousandsSep),
    FIELD("monGrouping",        "String",  monGrouping),
    FIELD("PositiveSign",       "String",  positiveSign),
    FIELD("NegativeSign",       "String",  negativeSign),
    FIELD("IntFracDigits",      "Integer", intFracDigits),
    FIELD("FracDigits",         "Integer", fracDigits),
    FIELD("PosCSPrecedes",      "Boolean", posCSPrecedes),
    FIELD("PosSepBySpace",      "Boolean", posSepBySpace),
    FIELD("NegCSPrecedes",      "Boolean", negCSPrecedes),
    FIELD("NegSepBySpace",      "Boolean", negSepBySpace),
    FIELD("PosSignPosition",    "Integer", posSignPosition),
    FIELD("NegSignPosition",    "Integer", negSignPosition),
    FIELD("IntPosCSPrecedes",   "Integer", intPosCSPrecedes),
    FIELD("IntNegCSPrecedes",   "Integer", intNegCSPrecedes),
    FIELD("IntPosSepBySpace",   "Integer", intPosSepBySpace),
    FIELD("IntNegSepBySpace",   "Integer", intNegSepBySpace),
    FIELD("IntPosSignPosition", "Integer", intPosSignPosition),
    FIELD("IntNegSignPosition", "Integer", intNegSignPosition),
};
#undef FIELD
// clang-format on

// Private, so that scripts come to objects by the shared method only.
REALmethodDefinition gMethods[] = {ObjectMethod("Constructor", LocaleDestructor, 0x84)};

REALmethodDefinition gSharedMethods[] = {
    Method("Locale(Locale as string = \"\") as LocaleZKT", GetLocale, 0x4),
};

}  // namespace

REALclassDefinition gLocaleClass = [] {
  REALclassDefinition definition = {};
  definition.version = 15;
  definition.name = "LocaleZKT";
  definition.dataSize = sizeof(LocaleData);
  definition.destructor = reinterpret_cast<void*>(LocaleDestructor);
  definition.properties = gProperties;
  definition.propertyCount = std::size(gProperties);
  definition.methods = gMethods;
  definition.methodCount = std::size(gMethods);
  definition.flags = kConsoleSafe;
  definition.sharedMethods = gSharedMethods;
  definition.sharedMethodCount = std::size(gSharedMethods);
  return definition;
}();

}  // namespace zkt
