// Compares date parsing and formatting with direct calls to the C library. Input: a digit that selects the locale, the
// format, a line feed, and the date string.
#include <ctime>
#include <optional>

#include "core/classes.h"
#include "core/dates.h"
#include "host.h"
#include "locale/date_format.h"

namespace {

host::StringRef UTF8(std::string_view text) { return host::StringRef(host::MakeString(text, zkt::kEncodingUTF8)); }

// Returns the parsed date as the host formats it, or an empty string if the host cannot represent the date. In that
// case, a date object keeps the current time, so the caller skips the comparison.
std::string NormalText(const std::tm& read) {
  const host::ObjectRef date(host::MakeObject(host::FindClass("Date")));
  const bool isMoment = host::SetCalendarFields(
      date.Get(), {read.tm_year + 1900LL, read.tm_mon + 1LL, read.tm_mday, read.tm_hour, read.tm_min, read.tm_sec});
  return isMoment ? host::DateText(date.Get()) : "";
}

// Returns the time as the C library formats it. Returns nullopt for times that the C library cannot represent, and for
// years before 1900, which the plug-in formats as the year plus 1900.
std::optional<std::string> WrittenDirectly(const std::string& format, const std::tm& read) {
  std::tm calendar = {};
  calendar.tm_sec = read.tm_sec;
  calendar.tm_min = read.tm_min;
  calendar.tm_hour = read.tm_hour;
  calendar.tm_mday = read.tm_mday;
  calendar.tm_mon = read.tm_mon;
  calendar.tm_year = read.tm_year;
  calendar.tm_wday = -1;
  std::mktime(&calendar);
  if (calendar.tm_wday == -1 || calendar.tm_year < 0) return std::nullopt;
  char buffer[128] = {};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  return std::string(buffer, std::strftime(buffer, sizeof buffer, format.c_str(), &calendar));
#pragma GCC diagnostic pop
}

void Run(const char* locale, const std::string& format, const std::string& text) {
  const host::StringRef localeText = UTF8(locale);
  const host::StringRef formatText = UTF8(format);
  const host::StringRef dateText = UTF8(text);
  REALdate date = nullptr;
  const bool matches = zkt::parseDateZKT(formatText.Get(), dateText.Get(), &date, localeText.Get());
  const host::ObjectRef dateObject(reinterpret_cast<REALobject>(date));
  fuzz::Require(std::string_view(std::setlocale(LC_TIME, nullptr)) == locale, "the LC_TIME locale is unchanged");
  std::tm read = {};
  fuzz::Require(matches == (::strptime(text.c_str(), format.c_str(), &read) != nullptr),
                "the text matches if and only if strptime accepts it");
  const std::string normalText = NormalText(read);
  if (normalText.empty()) return;
  fuzz::Require(host::DateText(dateObject.Get()) == normalText, "the parsed date equals the result of strptime");

  REALdateTime dateTime = nullptr;
  zkt::parseDateTimeZKT(formatText.Get(), dateText.Get(), &dateTime, localeText.Get());
  const host::ObjectRef dateTimeObject(reinterpret_cast<REALobject>(dateTime));
  const host::StringRef written(zkt::formatDateZKT(formatText.Get(), date, localeText.Get()));
  const host::StringRef writtenToo(zkt::formatDateTimeZKT(formatText.Get(), dateTime, localeText.Get()));
  const auto direct = WrittenDirectly(format, read);
  fuzz::Require(!direct || host::ToUTF8(written.Get()) == *direct, "the plug-in formats a date as strftime does");
  fuzz::Require(host::ToUTF8(written.Get()) == host::ToUTF8(writtenToo.Get()), "Date and DateTime are formatted alike");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  ::setenv("TZ", "UTC", 1);
  fuzz::NeedHost();
  std::string_view input = fuzz::Text(bytes, size);
  const char* const locale = fuzz::TakeLocale(input);
  const std::string format = fuzz::UpToZero(fuzz::TakeLine(input));
  Run(locale, format, fuzz::UpToZero(input));
  fuzz::RequireBalance();
  return 0;
}
