#include "locale/date_format.h"

#include <clocale>
#include <ctime>
#include <iterator>
#include <optional>
#include <utility>

#include "dates/date_objects.h"
#include "frame/contract/host_services.h"
#include "runtime/exceptions.h"
#include "runtime/text_builder.h"
#include "runtime/text_reader.h"

namespace zkt {

namespace {

// Switches LC_TIME permanently. The destructor does not restore LC_TIME, but sets LC_NUMERIC to "C". A TimeLocale
// object exists only during the call to the C library, so the final locale is already in effect when the host creates
// the result.
class TimeLocale {
 public:
  explicit TimeLocale(REALstring locale) : isNamed_(locale != nullptr) {
    if (!isNamed_) return;
    rbText name(locale);
    isKnown_ = std::setlocale(LC_TIME, name.GetASCII()) != nullptr;
    if (!isKnown_) RaiseException("UnsupportedFormatException", "Invalid locale.");
  }
  TimeLocale(const TimeLocale&) = delete;
  TimeLocale& operator=(const TimeLocale&) = delete;
  ~TimeLocale() {
    if (isNamed_ && isKnown_) std::setlocale(LC_NUMERIC, "C");
  }

  // Returns false if the constructor has raised the exception for an unknown locale.
  bool IsKnown() const { return isKnown_; }

 private:
  bool isNamed_;
  bool isKnown_ = true;
};

// Returns the date as normalized local time, or nullopt if the date cannot be read or the platform's calendar cannot
// represent it.
std::optional<std::tm> CalendarOf(REALobject date) {
  CalendarFields fields;
  for (auto property = std::rbegin(kCalendarProperties); property != std::rend(kCalendarProperties); ++property)
    if (!ReadCalendarField(date, *property, &fields)) return std::nullopt;
  std::tm calendar = {};
  calendar.tm_isdst = -1;  // mktime determines whether daylight saving time applies
  calendar.tm_sec = static_cast<int>(fields.second);
  calendar.tm_min = static_cast<int>(fields.minute);
  calendar.tm_hour = static_cast<int>(fields.hour);
  calendar.tm_mday = static_cast<int>(fields.day);
  calendar.tm_mon = static_cast<int>(static_cast<std::uint64_t>(fields.month) - 1);
  // Years before 1900 are passed unchanged, so the C library adds 1900 to them. Callers depend on this.
  calendar.tm_year = static_cast<int>(fields.year >= 1900 ? fields.year - 1900 : fields.year);
  calendar.tm_wday = -1;  // stays -1 if mktime fails; mktime also returns -1 for a valid moment in 1969
  const std::time_t time = std::mktime(&calendar);
  if (calendar.tm_wday == -1 || ::localtime_r(&time, &calendar) == nullptr) return std::nullopt;
  return calendar;
}

template <class Date>
REALstring Format(REALstring format, Date date, REALstring locale) {
  if (date == nullptr) {
    RaiseException("NilObjectException", "date is nil");
    return nullptr;
  }
  const auto calendar = CalendarOf(reinterpret_cast<REALobject>(date));
  if (!calendar) return nullptr;
  rbText formatText(format);
  const char* const utf8 = formatText.GetUTF8().data();
  char buffer[128] = {};
  std::size_t length = 0;
  {
    const TimeLocale timeLocale(locale);
    if (!timeLocale.IsKnown()) return nullptr;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    length = std::strftime(buffer, sizeof buffer, utf8, &*calendar);
#pragma GCC diagnostic pop
  }
  return REALBuildUnicodeString(buffer, static_cast<long long>(length), kEncodingUTF8);
}

template <class Date>
bool Parse(REALstring format, REALstring text, Date* date, REALstring locale, Date (*newDate)(const CalendarFields&)) {
  if (const auto former = reinterpret_cast<REALobject>(std::exchange(*date, nullptr))) REALUnlockObject(former);
  rbText textReader(text);
  rbText formatReader(format);
  const char* const textUTF8 = textReader.GetUTF8().data();
  const char* const formatUTF8 = formatReader.GetUTF8().data();
  std::tm calendar = {};
  bool matches = false;
  {
    const TimeLocale timeLocale(locale);
    if (!timeLocale.IsKnown()) return false;
    matches = ::strptime(textUTF8, formatUTF8, &calendar) != nullptr;
  }
  *date = newDate(CalendarFieldsOf(calendar));
  return matches;
}

}  // namespace

REALstring formatDateZKT(REALstring format, REALdate date, REALstring locale) { return Format(format, date, locale); }

REALstring formatDateTimeZKT(REALstring format, REALdateTime date, REALstring locale) {
  return Format(format, date, locale);
}

REALboolean parseDateZKT(REALstring format, REALstring text, REALdate* date, REALstring locale) {
  return Parse(format, text, date, locale, NewDate);
}

REALboolean parseDateTimeZKT(REALstring format, REALstring text, REALdateTime* date, REALstring locale) {
  return Parse(format, text, date, locale, NewDateTime);
}

}  // namespace zkt
