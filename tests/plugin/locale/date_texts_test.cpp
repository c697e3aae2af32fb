// Formats and parses dates in real locales and in time zones with daylight saving time.
#include <ctime>

#include "core/dates.h"
#include "locale/date_format.h"
#include "plugin/locale/locale_fixture.h"

namespace {

using namespace tests;

constexpr const char* kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";

// Tests both kinds of date, in the time zone that TZ names, or in Berlin's time zone if TZ is not set.
class DateTexts : public Locales {
 protected:
  DateTexts() {
    if (const char* const zone = std::getenv("TZ")) formerZone_ = zone;
    if (formerZone_.empty()) SetZone(kBerlin);
  }
  ~DateTexts() override { SetZone(formerZone_.empty() ? nullptr : formerZone_.c_str()); }

  static void SetZone(const char* zone) {
    zone != nullptr ? ::setenv("TZ", zone, 1) : ::unsetenv("TZ");
    ::tzset();
  }

  static host::ObjectRef MakeDate(const char* className, const std::array<std::int64_t, 6>& fields) {
    host::ObjectRef date(host::MakeObject(host::FindClass(className)));
    EXPECT_TRUE(host::SetCalendarFields(date.Get(), fields));
    return date;
  }

  static std::string Format(const char* format, const std::array<std::int64_t, 6>& fields, const char* locale) {
    const host::StringRef formatText = OptionalString(format);
    const host::StringRef localeText = OptionalString(locale);
    const host::ObjectRef classic = MakeDate("Date", fields);
    const host::ObjectRef modern = MakeDate("DateTime", fields);
    const std::string text = TakeText(zkt::formatDateZKT(formatText.Get(), AsDate(classic), localeText.Get()));
    EXPECT_EQ(text, TakeText(zkt::formatDateTimeZKT(formatText.Get(), AsDateTime(modern), localeText.Get())));
    return text;
  }

  // Parses the text as both kinds of date and returns the result, with an asterisk if the text does not match the
  // format.
  static std::string Parse(const char* format, const char* text, const char* locale) {
    REALdate classic = reinterpret_cast<REALdate>(host::MakeObject(host::FindClass("Date")));  // parsing releases it
    REALdateTime modern = nullptr;
    const bool matches = zkt::parseDateZKT(OptionalString(format).Get(), OptionalString(text).Get(), &classic,
                                           OptionalString(locale).Get());
    EXPECT_EQ(matches, zkt::parseDateTimeZKT(OptionalString(format).Get(), OptionalString(text).Get(), &modern,
                                             OptionalString(locale).Get()));
    const host::ObjectRef first(reinterpret_cast<REALobject>(classic));
    const host::ObjectRef second(reinterpret_cast<REALobject>(modern));
    EXPECT_EQ(host::DateText(first.Get()), host::DateText(second.Get()));
    return host::DateText(first.Get()) + (matches ? "" : " *");
  }

 private:
  std::string formerZone_;
};

TEST_F(DateTexts, AreWrittenInEveryLocale) {
  const struct {
    const char* note;
    const char* format;
    std::array<std::int64_t, 6> fields;
    const char* locale;
    std::string want;
  } cases[] = {
      {"leap day", "%Y-%m-%d", {2024, 2, 29, 0, 0, 0}, nullptr, "2024-02-29"},
      {"German", "%A, %e. %B %Y", {2024, 2, 29, 0, 0, 0}, "de_DE.UTF-8", "Donnerstag, 29. Februar 2024"},
      {"French", "%d %b %Y", {2024, 8, 31, 0, 0, 0}, "fr_FR.UTF-8", "31 ao\u00FBt 2024"},
      {"Japanese", "%x", {2024, 12, 31, 0, 0, 0}, "ja_JP.UTF-8", "2024\u5E7412\u670831\u65E5"},
      {"the bytes of an 8-bit locale are kept", "%B", {2024, 3, 1, 0, 0, 0}, "de_DE.ISO-8859-1", "M\xE4rz"},
      {"years before 1900 count from 1900", "%Y-%m-%d", {1850, 6, 15, 0, 0, 0}, nullptr, "3750-06-15"},
      {"1899 is the last year that counts from 1900", "%Y", {1899, 12, 31, 12, 0, 0}, nullptr, "3799"},
      {"1900 is unchanged", "%Y", {1900, 1, 1, 12, 0, 0}, nullptr, "1900"},
      {"one second before 1970", "%Y %S", {1970, 1, 1, 0, 59, 59}, nullptr, "1970 59"},
      {"127 bytes fit", "%0127Y", {2024, 1, 1, 0, 0, 0}, nullptr, std::string(123, '0') + "2024"},
      {"128 bytes do not fit", "%0128Y", {2024, 1, 1, 0, 0, 0}, nullptr, "nil"},
      {"empty", "", {2024, 1, 1, 0, 0, 0}, nullptr, "nil"},
      {"nil format", nullptr, {2024, 1, 1, 0, 0, 0}, nullptr, "nil"},
  };
  for (const auto& c : cases) {
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(Format(c.format, c.fields, c.locale), c.want) << c.note;
    EXPECT_EQ(Categories(), std::string("C C ") + (c.locale != nullptr ? c.locale : "C") + " ") << c.note;
  }
}

TEST_F(DateTexts, AreNormalizedInLocalTime) {
  SetZone(kBerlin);
  EXPECT_EQ(Format("%a %j %Z", {2024, 12, 31, 0, 0, 0}, nullptr), "Tue 366 CET");
}

// Daylight saving time does not change the hour, even just before midnight.
TEST_F(DateTexts, KeepTheirHourInDaylightSavingTime) {
  for (const char* const zone : {kBerlin, "EST5EDT,M3.2.0,M11.1.0", "LHST-10:30LHDT-11,M10.1.0,M4.1.0", "UTC"}) {
    SetZone(zone);
    for (const std::int64_t month : {1, 7})
      for (const auto& [hour, minute] : {std::pair{12, 0}, {0, 0}, {23, 30}}) {
        char want[32];
        std::snprintf(want, sizeof want, "2024-%02d-15 %02d:%02d", static_cast<int>(month), hour, minute);
        EXPECT_EQ(Format("%Y-%m-%d %H:%M", {2024, month, 15, hour, minute, 0}, nullptr), want) << zone;
        EXPECT_EQ(Parse("%Y-%m-%d %H:%M", want, nullptr), std::string(want) + ":00") << zone;
      }
  }
  SetZone("EST5EDT,M3.2.0,M11.1.0");
  EXPECT_EQ(Format("%H:%M %Z", {2024, 7, 15, 12, 0, 0}, nullptr), "12:00 EDT");
}

// The bytes after an unterminated string are not part of it.
TEST_F(DateTexts, StopAtTheEndOfTheirStrings) {
  const auto unterminated = [](const char* text) {
    host::StringRef string = MakeString(text);
    string->Bytes()[string->length] = '9';
    return string;
  };
  const host::ObjectRef date = MakeDate("Date", {2024, 3, 1, 0, 0, 0});
  EXPECT_EQ(TakeText(zkt::formatDateZKT(unterminated("%B").Get(), AsDate(date), unterminated("de_DE.UTF-8").Get())),
            "M\u00E4rz");
  REALdate parsed = nullptr;
  EXPECT_TRUE(zkt::parseDateZKT(unterminated("%d").Get(), unterminated("1").Get(), &parsed, nullptr));
  const host::ObjectRef owner(reinterpret_cast<REALobject>(parsed));
  EXPECT_EQ(host::DateText(owner.Get()).substr(8), "01 00:00:00");
}

TEST_F(DateTexts, RestoreTheNumericLocaleAndKeepTheTimeLocale) {
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  Format("%B", {2024, 3, 1, 0, 0, 0}, "fr_FR.UTF-8");
  EXPECT_EQ(Categories(), "C de_DE.UTF-8 fr_FR.UTF-8 ");
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  Parse("%B", "mars", "fr_FR.UTF-8");
  EXPECT_EQ(Categories(), "C de_DE.UTF-8 fr_FR.UTF-8 ");
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(Format("%B", {2024, 3, 1, 0, 0, 0}, nullptr), "M\u00E4rz");
  EXPECT_EQ(Categories(), "de_DE.UTF-8 de_DE.UTF-8 de_DE.UTF-8 ");
}

// The numeric locale must already have its final value, "C", when the host creates the result.
TEST_F(DateTexts, RestoreTheNumericLocaleBeforeTheHostCreatesTheResult) {
  static std::string seen;
  const tests::ServiceReplaced newInstance(zkt::REALnewInstance, [](const char* name) -> REALobject {
    seen = Categories();
    return host::MakeObject(host::FindClass(name));
  });
  const tests::ServiceReplaced buildString(
      zkt::REALBuildStringWithEncoding,
      [](const void* bytes, std::int64_t count, std::uint32_t encoding) -> REALstring {
        seen = Categories();
        return host::MakeString({static_cast<const char*>(bytes), static_cast<std::size_t>(count)}, encoding);
      });
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  Parse("%B", "mars", "fr_FR.UTF-8");
  EXPECT_EQ(seen, "C de_DE.UTF-8 fr_FR.UTF-8 ");
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  REALobject const date = host::MakeObject(host::FindClass("Date"));
  const host::ObjectRef owner(date);
  TakeText(
      zkt::formatDateZKT(MakeString("%B").Get(), reinterpret_cast<REALdate>(date), MakeString("fr_FR.UTF-8").Get()));
  EXPECT_EQ(seen, "C de_DE.UTF-8 fr_FR.UTF-8 ");
}

TEST_F(DateTexts, AreReadInEveryLocale) {
  const struct {
    const char* format;
    const char* text;
    const char* locale;
    const char* want;
  } cases[] = {
      {"%Y-%m-%d", "2024-02-29", nullptr, "2024-02-29 00:00:00"},
      {"%d. %B %Y", "29. Februar 2024", "de_DE.UTF-8", "2024-02-29 00:00:00"},
      {"%d %B %Y %H:%M:%S", "1 ao\u00FBt 2024 13:14:15", "fr_FR.UTF-8", "2024-08-01 13:14:15"},
      {"%d.%m.%Y", "31.02.2023", nullptr, "2023-03-03 00:00:00"},
      {"%Y-%m-%d", "2024-02-29 and more", nullptr, "2024-02-29 00:00:00"},
      {"%Y-%m-%d", "2024-02", nullptr, "2024-01-31 00:00:00 *"},
      {"%Y-%m-%d", "never", nullptr, "1899-12-31 00:00:00 *"},
      {"%Y", nullptr, nullptr, "1899-12-31 00:00:00 *"},
      {nullptr, "2024", nullptr, "1899-12-31 00:00:00"},
      {"%d. %B %Y", "29. Februar 2024", nullptr, "1900-03-01 00:00:00 *"},
  };
  for (const auto& c : cases) {
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(Parse(c.format, c.text, c.locale), c.want) << (c.text != nullptr ? c.text : "nil");
  }
}

TEST_F(DateTexts, RequireAReadableDate) {
  EXPECT_EQ(TakeText(zkt::formatDateZKT(MakeString("%Y").Get(), nullptr, MakeString("xx_XX").Get())), "nil");
  EXPECT_EQ(MessageRaised(), "NilObjectException: date is nil");
  EXPECT_EQ(TakeText(zkt::formatDateTimeZKT(MakeString("%Y").Get(), nullptr, nullptr)), "nil");
  EXPECT_EQ(MessageRaised(), "NilObjectException: date is nil");
  const host::ObjectRef noDate(host::MakeObject(host::FindClass("RuntimeException")));
  EXPECT_EQ(TakeText(zkt::formatDateZKT(MakeString("%Y").Get(), AsDate(noDate), nullptr)), "nil");
  EXPECT_EQ(MessageRaised(), "");
  // The C library cannot represent a date with such fields.
  zkt::HostBindingTestAccess::Bind(zkt::REALGetPropValueInteger,
                                   [](REALobject, const char*, std::int64_t* value) -> REALboolean {
                                     *value = std::numeric_limits<int>::max();
                                     return 1;
                                   });
  EXPECT_EQ(TakeText(zkt::formatDateZKT(MakeString("%Y").Get(), AsDate(noDate), nullptr)), "nil");
  zkt::HostBindingTestAccess::Forget(zkt::REALGetPropValueInteger);
  EXPECT_EQ(MessageRaised(), "");
}

TEST_F(DateTexts, AreNilWhenTheHostCreatesNoDate) {
  const tests::ServiceWithheld without(zkt::REALnewInstance);
  const tests::RejectNilUnlock noNil;
  REALdate date = nullptr;
  EXPECT_TRUE(zkt::parseDateZKT(MakeString("%Y").Get(), MakeString("2024").Get(), &date, nullptr));
  EXPECT_EQ(date, nullptr);
}

}  // namespace
