// The class LocaleZKT: the C library's conventions for numbers and money in a locale, as of the object's creation.
// Reading a named locale switches LC_NUMERIC and LC_MONETARY of the process, and leaves both at "C".
#pragma once

#include <clocale>
#include <cstddef>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The instance data. The declared properties give its offsets to the host. All zero in a new object. The object owns a
// reference to each text. The names are those of `lconv`, spelled out.
struct LocaleData {
  REALstring name;
  REALstring decimalPoint;
  REALstring thousandsSep;
  REALstring grouping;  // the group sizes as bytes, from the right
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

// The record of the class. The catalogue fills it in, and it holds the offset of the instance data.
inline REALclassDefinition gLocaleClass = {};

// Returns the conventions of the named locale. If the name is nil, it is the current locale, and nothing is switched.
// The caller owns the object. Nil for a locale that the C library does not know.
REALobject GetLocale(REALstring name);

// Returns an object with these conventions, which the caller owns, or nil if the host cannot create it. The name is
// `nameText`, or `nameString` if that is null.
REALobject NewLocaleZKT(const std::lconv& conventions, REALstring nameString, const char* nameText);

// Releases the texts. Does nothing to a new object, so it also serves as the private constructor: only GetLocale
// creates objects.
void LocaleDestructor(REALobject locale);

}  // namespace zkt
