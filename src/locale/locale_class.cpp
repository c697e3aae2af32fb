#include "locale/locale_class.h"

#include <climits>
#include <cstring>
#include <memory>
#include <new>

#include "frame/contract/host_reference.h"
#include "frame/contract/instance_data.h"
#include "runtime/text_builder.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

using OwnedText = std::unique_ptr<char[]>;

// Copies the result of setlocale, whose memory the C library reuses. Returns null if the result is null or memory runs
// out.
OwnedText CopyOf(const char* text) {
  if (text == nullptr) return nullptr;
  const std::size_t size = std::strlen(text) + 1;
  OwnedText copy(new (std::nothrow) char[size]);
  if (copy) std::memcpy(copy.get(), text, size);
  return copy;
}

LocaleData& DataOf(REALobject locale) { return *InstanceData<LocaleData>(gLocaleClass, locale); }

constexpr REALstring LocaleData::*kTexts[] = {
    &LocaleData::name,          &LocaleData::decimalPoint,   &LocaleData::thousandsSep,    &LocaleData::grouping,
    &LocaleData::intCurrSymbol, &LocaleData::currencySymbol, &LocaleData::monDecimalPoint, &LocaleData::monThousandsSep,
    &LocaleData::monGrouping,   &LocaleData::positiveSign,   &LocaleData::negativeSign};

// The C library stores small numbers as plain chars, which are signed on some processors and unsigned on others. The
// largest char, 127 or 255, means that the locale does not define the field. Callers always get 127.
std::int64_t Number(char value) { return value == CHAR_MAX ? SCHAR_MAX : static_cast<signed char>(value); }
REALboolean Flag(char value) { return static_cast<REALboolean>(Number(value)); }

// clang-format off
void FillIn(LocaleData& data, const std::lconv& conventions) {
  data.decimalPoint       = CString2RB_detect_encoding(conventions.decimal_point);
  data.thousandsSep       = CString2RB_detect_encoding(conventions.thousands_sep);
  data.grouping           = CString2RB_detect_encoding(conventions.grouping);
  data.intCurrSymbol      = CString2RB_detect_encoding(conventions.int_curr_symbol);
  data.currencySymbol     = CString2RB_detect_encoding(conventions.currency_symbol);
  data.monDecimalPoint    = CString2RB_detect_encoding(conventions.mon_decimal_point);
  data.monThousandsSep    = CString2RB_detect_encoding(conventions.mon_thousands_sep);
  data.monGrouping        = CString2RB_detect_encoding(conventions.mon_grouping);
  data.positiveSign       = CString2RB_detect_encoding(conventions.positive_sign);
  data.negativeSign       = CString2RB_detect_encoding(conventions.negative_sign);
  data.intFracDigits      = Number(conventions.int_frac_digits);
  data.fracDigits         = Number(conventions.frac_digits);
  data.posCSPrecedes      = Flag(conventions.p_cs_precedes);
  data.posSepBySpace      = Flag(conventions.p_sep_by_space);
  data.negCSPrecedes      = Flag(conventions.n_cs_precedes);
  data.negSepBySpace      = Flag(conventions.n_sep_by_space);
  data.posSignPosition    = Number(conventions.p_sign_posn);
  data.negSignPosition    = Number(conventions.n_sign_posn);
  data.intPosCSPrecedes   = Number(conventions.int_p_cs_precedes);
  data.intNegCSPrecedes   = Number(conventions.int_n_cs_precedes);
  data.intPosSepBySpace   = Number(conventions.int_p_sep_by_space);
  data.intNegSepBySpace   = Number(conventions.int_n_sep_by_space);
  data.intPosSignPosition = Number(conventions.int_p_sign_posn);
  data.intNegSignPosition = Number(conventions.int_n_sign_posn);
}
// clang-format on

}  // namespace

REALobject NewLocaleZKT(const std::lconv& conventions, REALstring nameString, const char* nameText) {
  OwnedObject locale(REALnewInstance("LocaleZKT"));
  if (!locale) return nullptr;
  LocaleData& data = DataOf(locale.Get());
  if (nameText != nullptr) {
    data.name = CString2RB_detect_encoding(nameText);
  } else {
    data.name = OwnedString::Share(nameString).Release();
  }
  FillIn(data, conventions);
  return locale.Release();
}

REALobject GetLocale(REALstring name) {
  rbText nameText(name);
  const OwnedText inForce = CopyOf(std::setlocale(LC_NUMERIC, nullptr));
  if (name == nullptr) return NewLocaleZKT(*std::localeconv(), name, inForce.get());
  const char* const answer = std::setlocale(LC_NUMERIC, nameText.GetASCII());
  if (answer == nullptr) return nullptr;
  const OwnedText given = CopyOf(answer);
  std::setlocale(LC_MONETARY, nameText.GetASCII());
  const REALobject locale = given ? NewLocaleZKT(*std::localeconv(), name, given.get()) : nullptr;
  // Callers rely on the C locale being in effect afterwards.
  std::setlocale(LC_NUMERIC, "C");
  std::setlocale(LC_MONETARY, "C");
  return locale;
}

void LocaleDestructor(REALobject locale) {
  LocaleData& data = DataOf(locale);
  for (const auto text : kTexts) DropHeld(data.*text);
}

}  // namespace zkt
