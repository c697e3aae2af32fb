// A moment, or the distance between two, in the units of a calendar.
#pragma once

#include <cstdint>

namespace zkt {

// In the order in which the instance data of DateDifferenceZKT holds them.
struct CalendarFields {
  std::int64_t day = 0;
  std::int64_t month = 0;
  std::int64_t year = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;
  std::int64_t hour = 0;
};

}  // namespace zkt
