// Uses real locales to test the LocaleZKT class.
#include "locale/locale_class.h"

#include <array>

#include "frame/contract/instance_data.h"
#include "plugin/locale/locale_fixture.h"

namespace {

using namespace tests;

// Creates a LocaleZKT object and reads its strings.
class LocaleObject : public Locales {
 protected:
  void Make(const char* name) { object_ = host::ObjectRef(zkt::GetLocale(OptionalString(name).Get())); }
  ~LocaleObject() override { object_ = {}; }
  zkt::LocaleData& Data() { return *zkt::InstanceData<zkt::LocaleData>(zkt::gLocaleClass, object_.Get()); }
  static std::string Text(REALstring text) { return text != nullptr ? host::ToUTF8(text) : "nil"; }

  host::ObjectRef object_;
};

TEST_F(LocaleObject, HoldsTheConventions) {
  Make("de_DE.UTF-8");
  EXPECT_EQ(Categories(), "C C C ");
  EXPECT_EQ(Text(Data().name), "de_DE.UTF-8");
  EXPECT_EQ(Text(Data().decimalPoint) + Text(Data().thousandsSep) + Text(Data().monDecimalPoint), ",.,");
  EXPECT_EQ(Text(Data().currencySymbol) + Text(Data().intCurrSymbol), "\u20ACEUR ");
  EXPECT_EQ(Data().currencySymbol->encoding, zkt::kEncodingUTF8);
  EXPECT_EQ(Data().decimalPoint->encoding, zkt::kEncodingASCII);
  EXPECT_EQ(Text(Data().grouping) + Text(Data().negativeSign) + Text(Data().positiveSign), "\3\3-nil");
  EXPECT_EQ(Data().fracDigits, 2);
  EXPECT_EQ(Data().posCSPrecedes, 0);
  EXPECT_EQ(Data().negSepBySpace, 1);
  EXPECT_EQ(Data().intPosSignPosition, 1);
  Make("en_IN.UTF-8");
  EXPECT_EQ(Text(Data().grouping) + Text(Data().monGrouping), "\3\2\3\2");
  EXPECT_EQ(Data().posCSPrecedes, 1);
  Make("ja_JP.UTF-8");
  EXPECT_EQ(Text(Data().currencySymbol), "\uFFE5");
  EXPECT_EQ(Data().fracDigits, 0);
  Make("ps_AF.UTF-8");
  EXPECT_EQ(Text(Data().decimalPoint), "\u066B");
}

// Uses made-up conventions, because in every real locale some fields have equal values.
TEST_F(LocaleObject, CopiesEachFieldToItsPlace) {
  char texts[10][2] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
  std::lconv conventions{};
  char* std::lconv::*const textFields[] = {&std::lconv::decimal_point,     &std::lconv::thousands_sep,
                                           &std::lconv::grouping,          &std::lconv::int_curr_symbol,
                                           &std::lconv::currency_symbol,   &std::lconv::mon_decimal_point,
                                           &std::lconv::mon_thousands_sep, &std::lconv::mon_grouping,
                                           &std::lconv::positive_sign,     &std::lconv::negative_sign};
  for (std::size_t i = 0; i < std::size(textFields); ++i) conventions.*textFields[i] = texts[i];
  char std::lconv::*const numberFields[] = {
      &std::lconv::int_frac_digits,   &std::lconv::frac_digits,        &std::lconv::p_cs_precedes,
      &std::lconv::p_sep_by_space,    &std::lconv::n_cs_precedes,      &std::lconv::n_sep_by_space,
      &std::lconv::p_sign_posn,       &std::lconv::n_sign_posn,        &std::lconv::int_p_cs_precedes,
      &std::lconv::int_n_cs_precedes, &std::lconv::int_p_sep_by_space, &std::lconv::int_n_sep_by_space,
      &std::lconv::int_p_sign_posn,   &std::lconv::int_n_sign_posn};
  char next = 1;
  for (char std::lconv::*const field : numberFields) conventions.*field = next++;
  const host::StringRef name = MakeString("name");
  object_ = host::ObjectRef(zkt::NewLocaleZKT(conventions, name.Get(), nullptr));
  const zkt::LocaleData& d = Data();
  EXPECT_EQ(d.name, name.Get());
  EXPECT_EQ(Text(d.decimalPoint) + Text(d.thousandsSep) + Text(d.grouping) + Text(d.intCurrSymbol) +
                Text(d.currencySymbol) + Text(d.monDecimalPoint) + Text(d.monThousandsSep) + Text(d.monGrouping) +
                Text(d.positiveSign) + Text(d.negativeSign),
            "abcdefghij");
  EXPECT_EQ((std::array<std::int64_t, 14>{d.intFracDigits, d.fracDigits, d.posCSPrecedes, d.posSepBySpace,
                                          d.negCSPrecedes, d.negSepBySpace, d.posSignPosition, d.negSignPosition,
                                          d.intPosCSPrecedes, d.intNegCSPrecedes, d.intPosSepBySpace,
                                          d.intNegSepBySpace, d.intPosSignPosition, d.intNegSignPosition}),
            (std::array<std::int64_t, 14>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}));
}

TEST_F(LocaleObject, OfTheCurrentLocaleChangesNothing) {
  const tests::RejectNilUnlock noNil;
  Make(nullptr);
  EXPECT_EQ(Text(Data().name), "C");
  EXPECT_EQ(Text(Data().decimalPoint) + Text(Data().thousandsSep) + Text(Data().grouping), ".nilnil");
  EXPECT_EQ(Data().intFracDigits, 127);
  EXPECT_EQ(Data().negSignPosition, 127);
  EXPECT_EQ(Data().posSepBySpace, 127);
  std::setlocale(LC_NUMERIC, "de_DE.ISO-8859-1");
  std::setlocale(LC_MONETARY, "de_CH.UTF-8");
  zkt::LocaleDestructor(object_.Get());  // the object's own destructor then has nothing to release
  Make(nullptr);
  EXPECT_EQ(Text(Data().name) + Text(Data().decimalPoint) + Text(Data().monDecimalPoint), "de_DE.ISO-8859-1,.");
  EXPECT_EQ(Categories(), "de_DE.ISO-8859-1 de_CH.UTF-8 C ");
}

TEST_F(LocaleObject, IsNilWhenTheHostCreatesNone) {
  const tests::ServiceWithheld without(zkt::REALnewInstance);
  EXPECT_EQ(zkt::GetLocale(nullptr), nullptr);
  EXPECT_EQ(zkt::GetLocale(MakeString("de_DE.UTF-8").Get()), nullptr);
  EXPECT_EQ(Categories(), "C C C ");
}

}  // namespace
