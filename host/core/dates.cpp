#include "core/dates.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <map>
#include <stdexcept>

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

constexpr std::int64_t SecondsFrom1904To1970() {
  using namespace std::chrono;
  return duration_cast<seconds>(sys_days(year(1970) / 1 / 1) - sys_days(year(1904) / 1 / 1)).count();
}

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
    {"Date", "TotalSeconds", SecondsFrom1904To1970(), timegm, gmtime_r, false},
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
  constexpr double kMax = 9007199254740992.0;  // from 2^53 on, a Double cannot represent every second
  if (!(std::abs(sinceEpoch) < kMax)) return false;
  const auto time = static_cast<std::time_t>(sinceEpoch);
  std::tm calendar{};
  tzset();  // localtime_r need not notice a changed time zone
  if (kind.toFields(&time, &calendar) == nullptr) return false;
  for (const Field& field : kFields)
    FindProperty(date, field.name)->payload = std::int64_t{calendar.*field.member} + field.offset;
  FindProperty(date, kind.secondsName)->payload = seconds;
  return true;
}

// Sets the current local time. A Date stores what the local clock shows, not the moment.
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

// The constructors that plug-ins call. A Date has no time zone, so its offset is ignored; a DateTime uses the time zone
// of the process. A moment that does not exist leaves the date unchanged.
template <class... Ignored>
bool Construct(REALobjectStruct* date, std::int64_t year, std::int64_t month, std::int64_t day, std::int64_t hour,
               std::int64_t minute, std::int64_t second, Ignored...) {
  return SetCalendarFields(date, {year, month, day, hour, minute, second});
}

void ConstructInScript(REALobjectStruct* date, std::int64_t year, std::int64_t month, std::int64_t day,
                       std::int64_t hour, std::int64_t minute, std::int64_t second) {
  if (!Construct(date, year, month, day, hour, minute, second))
    throw std::runtime_error("there is no such " + date->type->name);
}

std::map<std::string, void*> MethodsOf(const DateKind& kind) {
  if (kind.isReadOnly)
    return {
        {"Constructor(year As integer, month As integer, day As integer, hour As integer = 0, minute As integer = 0, "
         "second As integer = 0, nanoseconds As Integer = 0, timezone As TimeZone = Nil)",
         Address(&Construct<std::int64_t, REALobjectStruct*>)}};
  return {{"Constructor(Year as Integer, Month as Integer, Day as Integer, Hour as Integer, Minute as Integer, "
           "Second as Integer, GMTOffset as Double)",
           Address(&Construct<double>)},
          {"Constructor(Year as Integer, Month as Integer, Day as Integer, hour as Integer, minute as Integer, "
           "second as Integer)",
           Address(&Construct<>)}};
}

}  // namespace

std::vector<ObjectClass*> DateClasses() {
  std::vector<ObjectClass*> classes;
  for (const DateKind& kind : kKinds) {
    auto* const type = classes.emplace_back(new ObjectClass{.name = kind.className,
                                                            .isReadOnly = kind.isReadOnly,
                                                            .initialize = SetToNow,
                                                            .assign = Assign,
                                                            .methods = MethodsOf(kind)});
    for (const Field& field : kFields) type->properties.emplace(field.name, MakeValue(0));
    type->properties.emplace(kind.secondsName, MakeValue(0.0));
    type->scriptMethods = {{"Constructor()", Address(&ConstructNothing)},
                           {"Constructor(year As Integer, month As Integer, day As Integer, hour As Integer = 0, "
                            "minute As Integer = 0, second As Integer = 0)",
                            Address(&ConstructInScript)}};
  }
  return classes;
}

bool IsDate(const ObjectClass* type) { return FindKind(type) != nullptr; }

bool SetCalendarFields(REALobjectStruct* date, const std::array<std::int64_t, 6>& fields) {
  // Far from overflowing a `tm`, yet beyond any calendar.
  constexpr std::int64_t kMax = 1'000'000'000;
  for (const std::int64_t field : fields)
    if (field < -kMax || field > kMax) return false;
  std::tm calendar{};
  for (std::size_t i = 0; i < fields.size(); ++i)
    calendar.*kFields[i].member = static_cast<int>(fields[i]) - kFields[i].offset;
  calendar.tm_isdst = -1;
  calendar.tm_wday = -1;  // stays so if there is no such moment: a time of -1 can be valid
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
