// The class LocaleZKT: what the C library knows of a locale's numbers and money, as it was when the object was made.
// Reading a named locale switches the numeric and the monetary category of the process, and leaves both at "C".
#pragma once

#include <clocale>
#include <cstddef>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The instance data, whose offsets the declared properties share with the host. All zero in a new object. The texts are
// held with one reference each; the names are those of `lconv` in full words.
struct LocaleData {
  REALstring name;
  REALstring decimalPoint;
  REALstring thousandsSep;
  REALstring grouping;  // the sizes of the groups as bytes, from the right
  REALstring intCurrSymbol;
  REALstring currencySymbol;
  REALstring monDecimalPoint;
  REALstring monThousandsSep;
  REALstring monGrouping;
  REALstring positiveSign;
  REALstring negativeSign;
  std::int64_t intFracDigits;
  alignas(8) REALboolean posCSPrecedes;
  std::int64_t fracDigits;
  alignas(8) REALboolean posSepBySpace;
  std::int64_t posSignPosition;
  alignas(8) REALboolean negCSPrecedes;
  std::int64_t negSignPosition;
  alignas(8) REALboolean negSepBySpace;
  std::int64_t intPosCSPrecedes;
  std::int64_t intNegCSPrecedes;
  std::int64_t intPosSepBySpace;
  std::int64_t intNegSepBySpace;
  std::int64_t intPosSignPosition;
  std::int64_t intNegSignPosition;
};
static_assert(sizeof(LocaleData) == 200);
static_assert(offsetof(LocaleData, negativeSign) == 80);
static_assert(offsetof(LocaleData, posCSPrecedes) == 96);
static_assert(offsetof(LocaleData, posSepBySpace) == 112);
static_assert(offsetof(LocaleData, negCSPrecedes) == 128);
static_assert(offsetof(LocaleData, negSepBySpace) == 144);
static_assert(offsetof(LocaleData, intNegSignPosition) == 192);

// The record of the class, which the catalogue fills in. It tells where in an object the instance data lies.
inline REALclassDefinition gLocaleClass = {};

// The conventions of the named locale, or of the one in force for a nil name, which switches nothing. The caller owns
// the object; nil for a locale that the C library does not know.
REALobject GetLocale(REALstring name);

// An object with these conventions, owned by the caller; nil when the host cannot make it. The name is the text, or
// without one the string.
REALobject NewLocaleZKT(const std::lconv& conventions, REALstring nameString, const char* nameText);

// Releases the texts. Does nothing to a new object, which is why it serves as the constructor too: objects are made by
// GetLocale only.
void LocaleDestructor(REALobject locale);

}  // namespace zkt
