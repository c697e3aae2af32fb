#pragma once

// The oracle of the date tests: the simplest implementation of the calendar difference, which borrows one unit at a
// time. Keep it slow and obvious. It must not share code with the library: otherwise, comparing the two would prove
// nothing.

#include <cstdint>
#include <initializer_list>
#include <tuple>
#include <utility>

namespace tests {

struct ModelMoment {
  std::int64_t year, month, day, hour, minute, second;
};

struct ModelDifference {
  ModelMoment value;
  bool swap;
  ModelMoment start, end;  // after the swap, if there was one
};

__extension__ typedef __int128 ModelWide;

// Reduces an exact number modulo 2^64 to the range of std::int64_t.
inline std::int64_t ModelWrap(ModelWide exact) { return static_cast<std::int64_t>(static_cast<std::uint64_t>(exact)); }
inline std::int64_t ModelPlus(std::int64_t left, std::int64_t right) { return ModelWrap(ModelWide{left} + right); }
inline std::int64_t ModelMinus(std::int64_t left, std::int64_t right) { return ModelWrap(ModelWide{left} - right); }

inline bool ModelIsLeapYear(std::int64_t year) {
  if (year % 4 != 0) return false;
  if (year % 100 != 0) return true;
  return year % 400 == 0;
}

inline bool ModelIsLater(const ModelMoment& left, const ModelMoment& right) {
  return std::tie(left.year, left.month, left.day, left.hour, left.minute, left.second) >
         std::tie(right.year, right.month, right.day, right.hour, right.minute, right.second);
}

// Month 0 is December of the previous year. The end year determines whether February has a leap day, even if the month
// is in an earlier year.
inline std::int64_t ModelDaysOfMonth(std::int64_t month, std::int64_t endYear) {
  if (month > 12) return 1000;
  for (const int longMonth : {0, 1, 3, 5, 7, 8, 10, 12}) {
    if (month == longMonth) return 31;
  }
  for (const int shortMonth : {4, 6, 9, 11}) {
    if (month == shortMonth) return 30;
  }
  return ModelIsLeapYear(endYear) ? 29 : 28;
}

inline ModelDifference ModelDifferenceOf(ModelMoment start, ModelMoment end) {
  const bool swap = ModelIsLater(start, end);
  if (swap) std::swap(start, end);

  ModelMoment value{ModelMinus(end.year, start.year),     ModelMinus(end.month, start.month),
                    ModelMinus(end.day, start.day),       ModelMinus(end.hour, start.hour),
                    ModelMinus(end.minute, start.minute), ModelMinus(end.second, start.second)};
  while (value.second < 0) {
    value.second = ModelPlus(value.second, 60);
    value.minute = ModelMinus(value.minute, 1);
  }
  while (value.minute < 0) {
    value.minute = ModelPlus(value.minute, 60);
    value.hour = ModelMinus(value.hour, 1);
  }
  while (value.hour < 0) {
    value.hour = ModelPlus(value.hour, 24);
    value.day = ModelMinus(value.day, 1);
  }
  std::int64_t workingMonth = end.month;
  while (value.day < 0) {
    const bool wrapsYear = workingMonth <= 0;
    workingMonth = ModelMinus(workingMonth, 1);
    if (wrapsYear) workingMonth = ModelPlus(workingMonth, 12);  // only once, so a month far below 0 stays below 0
    value.day = ModelPlus(value.day, ModelDaysOfMonth(workingMonth, end.year));
    value.month = ModelMinus(value.month, 1);
  }
  while (value.month < 0) {
    value.month = ModelPlus(value.month, 12);
    value.year = ModelMinus(value.year, 1);
  }
  return {value, swap, start, end};
}

}  // namespace tests
