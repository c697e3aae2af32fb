// The LocaleZKT class.
#include <iterator>

#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "frame/catalogue/tables.h"
#include "locale/locale_class.h"

namespace zkt {

namespace {

// clang-format off
REALproperty gProperties[] = {
    FieldProperty("Name",               "String",  ZKT_FIELD(LocaleData, name),               kReadOnly, kObjectProperty),
    FieldProperty("DecimalPoint",       "String",  ZKT_FIELD(LocaleData, decimalPoint),       kReadOnly, kObjectProperty),
    FieldProperty("ThousandsSep",       "String",  ZKT_FIELD(LocaleData, thousandsSep),       kReadOnly, kObjectProperty),
    FieldProperty("Grouping",           "String",  ZKT_FIELD(LocaleData, grouping),           kReadOnly, kObjectProperty),
    FieldProperty("IntCurrSymbol",      "String",  ZKT_FIELD(LocaleData, intCurrSymbol),      kReadOnly, kObjectProperty),
    FieldProperty("CurrencySymbol",     "String",  ZKT_FIELD(LocaleData, currencySymbol),     kReadOnly, kObjectProperty),
    FieldProperty("monDecimalPoint",    "String",  ZKT_FIELD(LocaleData, monDecimalPoint),    kReadOnly, kObjectProperty),
    FieldProperty("monThousandsSep",    "String",  ZKT_FIELD(LocaleData, monThousandsSep),    kReadOnly, kObjectProperty),
    FieldProperty("monGrouping",        "String",  ZKT_FIELD(LocaleData, monGrouping),        kReadOnly, kObjectProperty),
    FieldProperty("PositiveSign",       "String",  ZKT_FIELD(LocaleData, positiveSign),       kReadOnly, kObjectProperty),
    FieldProperty("NegativeSign",       "String",  ZKT_FIELD(LocaleData, negativeSign),       kReadOnly, kObjectProperty),
    FieldProperty("IntFracDigits",      "Integer", ZKT_FIELD(LocaleData, intFracDigits),      kReadOnly, kObjectProperty),
    FieldProperty("FracDigits",         "Integer", ZKT_FIELD(LocaleData, fracDigits),         kReadOnly, kObjectProperty),
    FieldProperty("PosCSPrecedes",      "Boolean", ZKT_FIELD(LocaleData, posCSPrecedes),      kReadOnly, kObjectProperty),
    FieldProperty("PosSepBySpace",      "Boolean", ZKT_FIELD(LocaleData, posSepBySpace),      kReadOnly, kObjectProperty),
    FieldProperty("NegCSPrecedes",      "Boolean", ZKT_FIELD(LocaleData, negCSPrecedes),      kReadOnly, kObjectProperty),
    FieldProperty("NegSepBySpace",      "Boolean", ZKT_FIELD(LocaleData, negSepBySpace),      kReadOnly, kObjectProperty),
    FieldProperty("PosSignPosition",    "Integer", ZKT_FIELD(LocaleData, posSignPosition),    kReadOnly, kObjectProperty),
    FieldProperty("NegSignPosition",    "Integer", ZKT_FIELD(LocaleData, negSignPosition),    kReadOnly, kObjectProperty),
    FieldProperty("IntPosCSPrecedes",   "Integer", ZKT_FIELD(LocaleData, intPosCSPrecedes),   kReadOnly, kObjectProperty),
    FieldProperty("IntNegCSPrecedes",   "Integer", ZKT_FIELD(LocaleData, intNegCSPrecedes),   kReadOnly, kObjectProperty),
    FieldProperty("IntPosSepBySpace",   "Integer", ZKT_FIELD(LocaleData, intPosSepBySpace),   kReadOnly, kObjectProperty),
    FieldProperty("IntNegSepBySpace",   "Integer", ZKT_FIELD(LocaleData, intNegSepBySpace),   kReadOnly, kObjectProperty),
    FieldProperty("IntPosSignPosition", "Integer", ZKT_FIELD(LocaleData, intPosSignPosition), kReadOnly, kObjectProperty),
    FieldProperty("IntNegSignPosition", "Integer", ZKT_FIELD(LocaleData, intNegSignPosition), kReadOnly, kObjectProperty),
};
// clang-format on

// The constructor is private, so Xojo code can get objects only from the shared method. LocaleDestructor serves as the
// constructor because it does nothing to a new object.
REALmethodDefinition gMethods[] = {ObjectMethod("Constructor", LocaleDestructor, kPrivate)};

REALmethodDefinition gSharedMethods[] = {
    Method("Locale(Locale as string = \"\") as LocaleZKT", GetLocale, kAllProjects),
};

}  // namespace

REALclassDefinition* LocaleClass() {
  static REALclassDefinition& record = gLocaleClass = {
      .version = kCurrentREALControlVersion,
      .name = "LocaleZKT",
      .dataSize = sizeof(LocaleData),
      .destructor = reinterpret_cast<void*>(LocaleDestructor),
      .properties = gProperties,
      .propertyCount = std::size(gProperties),
      .methods = gMethods,
      .methodCount = std::size(gMethods),
      .flags = kAllProjects,
      .sharedMethods = gSharedMethods,
      .sharedMethodCount = std::size(gSharedMethods),
  };
  return &record;
}

}  // namespace zkt
