// A moment, or the difference between two moments, in calendar units.
#pragma once

#include <cstdint>

namespace zkt {

// The order of the fields is fixed, because the instance data of DateDifferenceZKT contains this struct.
struct CalendarFields {
  std::int64_t day = 0;
  std::int64_t month = 0;
  std::int64_t year = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;
  std::int64_t hour = 0;
};

}  // namespace zkt
