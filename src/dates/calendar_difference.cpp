#include "dates/calendar_difference.h"

#include <algorithm>
#include <limits>

#include "runtime/debug_log.h"

namespace zkt {

namespace {

struct Unit {
  std::int64_t CalendarFields::*field;
  const char* label;
  const char* labelOfDifference;
};

// Ordered from the largest to the smallest unit, because units are compared and logged in this order.
constexpr Unit kUnits[] = {
    {&CalendarFields::year, "year  ", "diff year  "},   {&CalendarFields::month, "month ", "diff month "},
    {&CalendarFields::day, "day   ", "diff day   "},    {&CalendarFields::hour, "hour  ", "diff hour  "},
    {&CalendarFields::minute, "minute", "diff minute"}, {&CalendarFields::second, "second", "diff second"},
};

constexpr std::int64_t Plus(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}
constexpr std::int64_t Minus(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}
constexpr std::int64_t Times(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

// If the count of a unit is negative, makes it non-negative by borrowing from the next larger unit.
void Borrow(std::int64_t& count, std::int64_t perLarger, std::int64_t& larger) {
  if (count >= 0) return;
  const std::int64_t taken = 1 - (count + 1) / perLarger;
  count = Plus(count, Times(taken, perLarger));
  larger = Minus(larger, taken);
}

// Returns the number of days in the month that borrowing has reached. Month 0 is December of the previous year. Invalid
// months also have a number of days, because borrowing must terminate for any fields that a host returns.
std::int64_t DaysOf(std::int64_t month, std::int64_t daysOfFebruary) {
  if (month > 12) return 1000;
  switch (month) {
    case 0:
    case 1:
    case 3:
    case 5:
    case 7:
    case 8:
    case 10:
    case 12:
      return 31;
    case 4:
    case 6:
    case 9:
    case 11:
      return 30;
    default:
      return daysOfFebruary;
  }
}

// Borrows days month by month, going backward from the end month.
class DayBorrowing {
 public:
  explicit DayBorrowing(const CalendarFields& end)
      : workingMonth_(end.month), workingYear_(end.year), daysOfFebruary_(IsLeapYear(end.year) ? 29 : 28) {}

  void Run(std::int64_t& day, std::int64_t& month) {
    while (day < 0) {
      if (!IsDebugging() || day < -kMaxLoggedDays) Stride(day, month);
      Step();
      const std::int64_t days = DaysOf(workingMonth_, daysOfFebruary_);
      Trace("emonth", workingMonth_);
      Trace("mdays", days);
      day = Plus(day, days);
      month = Minus(month, 1);
    }
  }

 private:
  // The maximum number of missing days for which every step is logged. With invalid fields, the log could otherwise
  // become nearly endless.
  static constexpr std::int64_t kMaxLoggedDays = 100'000;

  void Step() {
    if (workingMonth_ > 0) {
      --workingMonth_;
    } else {
      workingMonth_ += 11;
      workingYear_ = Minus(workingYear_, 1);
      Trace("eyear", workingYear_);
    }
  }

  // Takes as many steps at once as possible, but leaves some missing days for the last steps. Goes back whole years if
  // the month is close to a valid month, and months of equal length otherwise.
  void Stride(std::int64_t& day, std::int64_t& month) {
    struct {
      std::int64_t days, months, change, limit;
    } stride = {337 + daysOfFebruary_, 12, 0, std::numeric_limits<std::int64_t>::max()};
    if (workingMonth_ > 13) stride = {DaysOf(workingMonth_, daysOfFebruary_), 1, -1, workingMonth_ - 13};
    if (workingMonth_ < -11) stride = {DaysOf(workingMonth_, daysOfFebruary_), 1, 11, (-1 - workingMonth_) / 11};
    const std::int64_t count = std::min(stride.limit, -(day + 1) / stride.days);
    day += count * stride.days;
    month = Minus(month, count * stride.months);
    workingMonth_ += count * stride.change;
  }

  std::int64_t workingMonth_;
  std::int64_t workingYear_;  // for the log only
  // Always the length of February in the end year, even after borrowing has reached an earlier year. Callers depend on
  // the results.
  std::int64_t daysOfFebruary_;
};

}  // namespace

bool IsLeapYear(std::int64_t year) {
  if (year % 4 != 0) return false;
  return year % 100 != 0 || year % 400 == 0;
}

bool IsLater(const CalendarFields& a, const CalendarFields& b) {
  for (const Unit& unit : kUnits)
    if (a.*unit.field != b.*unit.field) return a.*unit.field > b.*unit.field;
  return false;
}

CalendarFields CalendarDifference(const CalendarFields& start, const CalendarFields& end) {
  CalendarFields difference;
  for (const Unit& unit : kUnits) {
    difference.*unit.field = Minus(end.*unit.field, start.*unit.field);
    Trace(unit.labelOfDifference, difference.*unit.field);
  }
  Borrow(difference.second, 60, difference.minute);
  Borrow(difference.minute, 60, difference.hour);
  Borrow(difference.hour, 24, difference.day);
  DayBorrowing(end).Run(difference.day, difference.month);
  Borrow(difference.month, 12, difference.year);
  return difference;
}

void TraceFields(const CalendarFields& fields) {
  for (const Unit& unit : kUnits) Trace(unit.label, fields.*unit.field);
}

void TraceFields(const CalendarFields& start, const CalendarFields& end) {
  for (const Unit& unit : kUnits) Trace(unit.label, start.*unit.field, end.*unit.field);
}

}  // namespace zkt
