#include "dates/date_objects.h"

#include "frame/contract/host_reference.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// The host looks up constructors by their exact declarations. In the shorter Date constructor, three parameter names
// are in lower case.
constexpr const char* kDateConstructorWithOffset =
    "Constructor(Year as Integer, Month as Integer, Day as Integer, Hour as Integer, Minute as Integer, "
    "Second as Integer, GMTOffset as Double)";
constexpr const char* kDateConstructor =
    "Constructor(Year as Integer, Month as Integer, Day as Integer, hour as Integer, minute as Integer, "
    "second as Integer)";
constexpr const char* kDateTimeConstructor =
    "Constructor(year As integer, month As integer, day As integer, hour As integer = 0, minute As integer = 0, "
    "second As integer = 0, nanoseconds As Integer = 0, timezone As TimeZone = Nil)";

template <class Function>
Function LoadConstructor(REALobject object, const char* declaration) {
  return reinterpret_cast<Function>(REALLoadObjectMethod(object, declaration));
}

// Sets the fields one by one, for hosts without a constructor that takes them. Starts with day 3, which every month
// has, so that no intermediate date overflows into the next month.
void SetFields(REALobject date, const CalendarFields& fields) {
  REALSetPropValueInteger(date, "Day", 3);
  for (const CalendarProperty& property : kCalendarProperties)
    REALSetPropValueInteger(date, property.name, fields.*property.field);
}

}  // namespace

double GetTotalSeconds(REALdate date) {
  double seconds = 0.0;
  REALGetPropValueDouble(reinterpret_cast<REALobject>(date), "TotalSeconds", &seconds);
  return seconds;
}

double GetDateTimeSecondsFrom1970(REALdateTime dateTime) {
  double seconds = 0.0;
  if (!REALGetPropValueDouble(reinterpret_cast<REALobject>(dateTime), "SecondsFrom1970", &seconds))
    Trace("Failed to read SecondsFrom1970 property.");
  return seconds;
}

bool ReadCalendarField(REALobject date, const CalendarProperty& property, CalendarFields* fields) {
  return REALGetPropValueInteger(date, property.name, &(fields->*property.field)) != 0;
}

CalendarFields CalendarFieldsOf(const std::tm& calendar) {
  return {.day = calendar.tm_mday,
          .month = std::int64_t{calendar.tm_mon} + 1,
          .year = std::int64_t{calendar.tm_year} + 1900,
          .minute = calendar.tm_min,
          .second = calendar.tm_sec,
          .hour = calendar.tm_hour};
}

REALdate NewDate(const CalendarFields& f) {
  using Constructor = void (*)(REALobject, std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
                               std::int64_t minute, std::int64_t second);
  using ConstructorWithOffset = void (*)(REALobject, std::int64_t year, std::int64_t month, std::int64_t day,
                                         std::int64_t hour, std::int64_t minute, std::int64_t second, double offset);
  constexpr double kLocalTime = -10000.0;

  Trace("NewDate", f.year, f.month, f.day, f.hour, f.minute, f.second);
  OwnedObject date(REALnewInstance("Date"));
  if (!date) return nullptr;
  const auto f1 = LoadConstructor<ConstructorWithOffset>(date.Get(), kDateConstructorWithOffset);
  Trace("f1", reinterpret_cast<void*>(f1));
  if (f1 != nullptr) {
    f1(date.Get(), f.year, f.month, f.day, f.hour, f.minute, f.second, kLocalTime);
    return reinterpret_cast<REALdate>(date.Release());
  }
  const auto f2 = LoadConstructor<Constructor>(date.Get(), kDateConstructor);
  Trace("f2", reinterpret_cast<void*>(f2));
  if (f2 != nullptr) {
    f2(date.Get(), f.year, f.month, f.day, f.hour, f.minute, f.second);
  } else {
    Trace("Date Constructor 3 missing!?");
    SetFields(date.Get(), f);
  }
  return reinterpret_cast<REALdate>(date.Release());
}

REALdateTime NewDateTime(const CalendarFields& f) {
  using Constructor = void (*)(REALobject, std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
                               std::int64_t minute, std::int64_t second, std::int64_t nanoseconds, REALobject timeZone);
  constexpr std::int64_t kNanoseconds = 0;
  const REALobject localTimeZone = nullptr;

  Trace("NewDateTime", f.year, f.month, f.day, f.hour, f.minute, f.second);
  Trace("NewDateTime", f.year, f.month, f.day, f.hour, f.minute, f.second, kNanoseconds);
  Trace("timezone", static_cast<const void*>(localTimeZone));
  OwnedObject dateTime(REALnewInstance("DateTime"));
  if (!dateTime) return nullptr;
  const auto constructor = LoadConstructor<Constructor>(dateTime.Get(), kDateTimeConstructor);
  if (constructor == nullptr) {
    Trace("Failed to get constructor for DateTime.");
    return nullptr;
  }
  constructor(dateTime.Get(), f.year, f.month, f.day, f.hour, f.minute, f.second, kNanoseconds, localTimeZone);
  return reinterpret_cast<REALdateTime>(dateTime.Release());
}

}  // namespace zkt
