#include "core/dates.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "core/classes.h"
#include "core/exceptions.h"
#include "core/framework.h"

namespace host {

namespace {

struct Field {
  const char* name;
  int std::tm::*member;
  int offset;  // calendar value minus `tm` member
};
constexpr std::array<Field, 6> kFields = {{{"Year", &std::tm::tm_year, 1900},
                                           {"Month", &std::tm::tm_mon, 1},
                                           {"Day", &std::tm::tm_mday, 0},
                                           {"Hour", &std::tm::tm_hour, 0},
                                           {"Minute", &std::tm::tm_min, 0},
                                           {"Second", &std::tm::tm_sec, 0}}};

constexpr std::int64_t kSecondsFrom1904To1970 = 2'082'844'800;

struct DateKind {
  const char* className;
  const char* secondsName;
  std::int64_t secondsAt1970;
  std::time_t (*toTime)(std::tm*);
  std::tm* (*toFields)(const std::time_t*, std::tm*);
  bool isReadOnly;
};

// A Date counts seconds without regard to time zones.
constexpr DateKind kKinds[] = {
    {"Date", "TotalSeconds", kSecondsFrom1904To1970, timegm, gmtime_r, false},
    {"DateTime", "SecondsFrom1970", 0, mktime, localtime_r, true},
};

const DateKind* FindKind(const ObjectClass* type) {
  for (const DateKind& kind : kKinds)
    if (type->IsA(kind.className)) return &kind;
  return nullptr;
}

bool SetSeconds(REALobjectStruct* date, double seconds) {
  const DateKind& kind = *FindKind(date->type);
  const double sinceEpoch = std::floor(seconds - static_cast<double>(kind.secondsAt1970));
  constexpr double kMax = 9007199254740992.0;  // beyond 2^53, a Double cannot represent every second
  if (!(std::abs(sinceEpoch) < kMax)) return false;
  const auto time = static_cast<std::time_t>(sinceEpoch);
  std::tm calendar{};
  tzset();  // localtime_r may not notice a changed time zone
  if (kind.toFields(&time, &calendar) == nullptr) return false;
  for (const Field& field : kFields)
    FindProperty(date, field.name)->payload = std::int64_t{calendar.*field.member} + field.offset;
  FindProperty(date, kind.secondsName)->payload = seconds;
  return true;
}

// Sets the date to the current time. A Date stores the local clock reading, not a point in time.
void SetToNow(REALobjectStruct* date) {
  const DateKind& kind = *FindKind(date->type);
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  tzset();
  localtime_r(&now, &local);
  SetSeconds(date, static_cast<double>(kind.toTime(&local) + kind.secondsAt1970));
}

std::array<std::int64_t, 6> CalendarFields(REALobjectStruct* date) {
  std::array<std::int64_t, 6> fields{};
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i] = FindProperty(date, kFields[i].name)->Integer();
  return fields;
}

bool Assign(REALobjectStruct* date, std::string_view property, const Value& value) {
  if (zkt::IsSameName(property, FindKind(date->type)->secondsName)) return SetSeconds(date, value.Real());
  std::array<std::int64_t, 6> fields = CalendarFields(date);
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (zkt::IsSameName(property, kFields[i].name)) fields[i] = value.Integer();
  return SetCalendarFields(date, fields);
}

// Implements the constructors that plug-ins call. A Date has no time zone, so the GMT offset is ignored. A DateTime
// uses the time zone of the process. A time that the calendar cannot represent leaves the object unchanged.
template <class... Ignored>
bool Construct(REALobjectStruct* date, std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
               std::int64_t minute, std::int64_t second, Ignored...) {
  return SetCalendarFields(date, {year, month, day, hour, minute, second});
}

// A Date normalizes fields that are out of range; a DateTime rejects them.
void ConstructInScript(REALobjectStruct* date, std::int64_t year, std::int64_t month, std::int64_t day,
                       std::int64_t hour, std::int64_t minute, std::int64_t second) {
  const std::array<std::int64_t, 6> fields = {year, month, day, hour, minute, second};
  const bool carriesOver = !FindKind(date->type)->isReadOnly;
  if (!SetCalendarFields(date, fields) || (!carriesOver && CalendarFields(date) != fields))
    Raise("InvalidArgumentException", "there is no such " + date->type->name);
}

void ConstructFromSeconds(REALobjectStruct* date, double secondsFrom1970) {
  if (!SetSeconds(date, secondsFrom1970)) Raise("InvalidArgumentException", "there is no such " + date->type->name);
}

void ConstructFromDate(REALobjectStruct* date, REALobjectStruct* other) {
  if (other == nullptr)
    Raise("NilObjectException", "Constructor takes a date");
  else
    SetCalendarFields(date, CalendarFields(other));
}

std::string SQLDate(REALobjectStruct* date) {
  const std::string text = DateText(date);
  return text.substr(0, text.find(' '));
}

// 1 is Sunday, and 7 is Saturday.
std::int64_t DayOfWeek(REALobjectStruct* date) {
  const auto fields = CalendarFields(date);
  const std::chrono::sys_days days = std::chrono::sys_days(std::chrono::year(static_cast<int>(fields[0])) /
                                                           static_cast<int>(fields[1]) / static_cast<int>(fields[2]));
  return std::chrono::weekday(days).c_encoding() + 1;
}

REALobjectStruct* AddInterval(REALobjectStruct* date, std::int64_t years, std::int64_t months, std::int64_t days,
                              std::int64_t hours, std::int64_t minutes, std::int64_t seconds) {
  std::array<std::int64_t, 6> fields = CalendarFields(date);
  const std::array<std::int64_t, 6> added = {years, months, days, hours, minutes, seconds};
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i] += added[i];
  REALobjectStruct* const result = MakeObject(date->type);
  if (!SetCalendarFields(result, fields)) Raise("InvalidArgumentException", "there is no such DateTime");
  return result;
}

// Parses a date such as "2024-03-01" or "2024-03-01 12:30:00".
REALobjectStruct* FromString(const std::string& text) {
  std::array<long long, 6> read{};
  int length = 0;
  const int count = std::sscanf(text.c_str(), "%4lld-%2lld-%2lld%n %2lld:%2lld:%2lld%n", &read[0], &read[1], &read[2],
                                &length, &read[3], &read[4], &read[5], &length);
  ObjectRef date(MakeObject(FindClass("DateTime")));
  if ((count != 3 && count != 6) || static_cast<std::size_t>(length) != text.size())
    Raise("InvalidArgumentException", "\"" + text + "\" is not a date");
  else
    ConstructInScript(date.Get(), read[0], read[1], read[2], read[3], read[4], read[5]);
  return date.Detach();
}

REALobjectStruct* Now() { return MakeObject(FindClass("DateTime")); }

}  // namespace

std::vector<ObjectClass*> DateClasses() {
  std::vector<ObjectClass*> classes;
  for (const DateKind& kind : kKinds) {
    auto* const type = classes.emplace_back(new ObjectClass{
        .name = kind.className, .isReadOnly = kind.isReadOnly, .initialize = SetToNow, .assign = Assign});
    type->scriptMethods = {
        {"Constructor(year As Integer, month As Integer, day As Integer, hour As Integer = 0, minute As Integer = 0, "
         "second As Integer = 0)",
         Address(&ConstructInScript)},
        {"SQLDate As String", Native<SQLDate>()},
        {"SQLDateTime As String", Native<DateText>()},
        {"DayOfWeek As Integer", Native<DayOfWeek>()}};
    for (const Field& field : kFields) type->properties.emplace(field.name, MakeValue(0));
    type->properties.emplace(kind.secondsName, MakeValue(0.0));
  }
  ObjectClass& date = *classes.front();
  date.methods = {{"Constructor(Year as Integer, Month as Integer, Day as Integer, Hour as Integer, Minute as Integer, "
                   "Second as Integer, GMTOffset as Double)",
                   Address(&Construct<double>)},
                  {"Constructor(Year as Integer, Month as Integer, Day as Integer, hour as Integer, minute as Integer, "
                   "second as Integer)",
                   Address(&Construct<>)}};
  date.scriptMethods.insert({"Constructor()", Address(&ConstructNothing)});
  ObjectClass& dateTime = *classes.back();
  dateTime.methods = {
      {"Constructor(year As integer, month As integer, day As integer, hour As integer = 0, minute As integer = 0, "
       "second As integer = 0, nanoseconds As Integer = 0, timezone As TimeZone = Nil)",
       Address(&Construct<std::int64_t, REALobjectStruct*>)}};
  dateTime.scriptMethods.insert(
      {{"Constructor(secondsFrom1970 As Double)", Address(&ConstructFromSeconds)},
       {"Constructor(other As DateTime)", Address(&ConstructFromDate)},
       {"Constructor(other As Date)", Address(&ConstructFromDate)},
       {"AddInterval(years As Integer = 0, months As Integer = 0, days As Integer = 0, hours As Integer = 0, "
        "minutes As Integer = 0, seconds As Integer = 0) As DateTime",
        Address(&AddInterval)}});
  return classes;
}

std::vector<FrameworkMethod> DateMethods() {
  return {{"DateTime", "Now As DateTime", Address(&Now)},
          {"DateTime", "FromString(text As String) As DateTime", Native<FromString>()}};
}

bool IsDate(const ObjectClass* type) { return FindKind(type) != nullptr; }

bool SetCalendarFields(REALobjectStruct* date, const std::array<std::int64_t, 6>& fields) {
  // Larger values are outside the range of any calendar and could overflow a `tm`.
  constexpr std::int64_t kMax = 1'000'000'000;
  for (const std::int64_t field : fields)
    if (field < -kMax || field > kMax) return false;
  std::tm calendar{};
  for (std::size_t i = 0; i < fields.size(); ++i)
    calendar.*kFields[i].member = static_cast<int>(fields[i]) - kFields[i].offset;
  calendar.tm_isdst = -1;
  calendar.tm_wday = -1;  // stays -1 on failure; a result of -1 can be a valid time
  const DateKind& kind = *FindKind(date->type);
  const std::time_t time = kind.toTime(&calendar);
  return calendar.tm_wday != -1 && SetSeconds(date, static_cast<double>(time + kind.secondsAt1970));
}

double SecondsOf(REALobjectStruct* date) { return FindProperty(date, FindKind(date->type)->secondsName)->Real(); }

std::string DateText(REALobjectStruct* date) {
  std::array<long long, 6> f{};
  std::ranges::copy(CalendarFields(date), f.begin());
  char text[160];
  std::snprintf(text, sizeof text, "%04lld-%02lld-%02lld %02lld:%02lld:%02lld", f[0], f[1], f[2], f[3], f[4], f[5]);
  return text;
}

}  // namespace host
