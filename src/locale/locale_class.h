// The LocaleZKT class: the C library's conventions for numbers and money in a locale, as they were when the object was
// created. Reading a named locale switches the process's LC_NUMERIC and LC_MONETARY, and leaves both set to "C".
#pragma once

#include <clocale>
#include <cstddef>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// The instance data. The declared properties tell the host the offsets of the fields. All fields are 0 in a new object.
// The object owns a reference to each string. The field names are those of `lconv`, spelled out.
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

// The class record. The catalogue fills it in, and the host stores the offset of the instance data in it.
inline REALclassDefinition gLocaleClass = {};

// Returns the conventions of the named locale, or of the current locale if the name is nil, in which case no locale is
// switched. The caller owns the object. Returns nil if the C library does not know the locale.
REALobject GetLocale(REALstring name);

// Returns an object with these conventions, or nil if the host cannot create it. The caller owns the object. The
// locale's name is `nameText`, or `nameString` if `nameText` is null.
REALobject NewLocaleZKT(const std::lconv& conventions, REALstring nameString, const char* nameText);

// Releases the strings. Does nothing to a new object, so it also serves as the private constructor. Xojo code can get
// objects only from GetLocale.
void LocaleDestructor(REALobject locale);

}  // namespace zkt
