// The class DateDifferenceZKT.
#include "dates/date_difference.h"
#include "frame/rows.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// clang-format off
#define FIELD(name, type, place) \
  FieldProperty<decltype(DateDifferenceData::place)>(name, type, offsetof(DateDifferenceData, place), true, 0x6)
#define CALENDAR_FIELD(name, place) \
  FieldProperty<std::int64_t>(name, "Integer", offsetof(DateDifferenceData, place), true, 0x6)
REALproperty gProperties[] = {
    CALENDAR_FIELD("Month",  result.month),
    CALENDAR_FIELD("Year",   result.year),
    CALENDAR_FIELD("Day",    result.day),
    CALENDAR_FIELD("Hour",   result.hour),
    CALENDAR_FIELD("Second", result.second),
    CALENDAR_FIELD("Minute", result.minute),
    FIELD("Swap",      "Boolean", swap),
    FIELD("Ready",     "Boolean", ready),
    FIELD("StartDate", "Variant", startDate),
    FIELD("EndDate",   "Variant", endDate),
    CALENDAR_FIELD("StartMonth",  start.month),
    CALENDAR_FIELD("StartYear",   start.year),
    CALENDAR_FIELD("StartDay",    start.day),
    CALENDAR_FIELD("StartHour",   start.hour),
    CALENDAR_FIELD("StartSecond", start.second),
    CALENDAR_FIELD("StartMinute", start.minute),
    CALENDAR_FIELD("EndMonth",  end.month),
    CALENDAR_FIELD("EndYear",   end.year),
    CALENDAR_FIELD("EndDay",    end.day),
    CALENDAR_FIELD("EndHour",   end.hour),
    CALENDAR_FIELD("EndSecond", end.second),
    CALENDAR_FIELD("EndMinute", end.minute),
    FIELD("TotalDay", "Integer", totalDay),
    AccessorProperty("StartTotalSeconds", "Double", getStartTotalSeconds, setStartTotalSeconds, 0x6),
    AccessorProperty("EndTotalSeconds",   "Double", getEndTotalSeconds,   setEndTotalSeconds,   0x6),
    AccessorProperty("TotalSeconds",      "Double", getTotalSeconds,      setTotalSeconds,      0x6),
};
#undef CALENDAR_FIELD
#undef FIELD

REALmethodDefinition gMethods[] = {
    ObjectMethod("Constructor", ConstructDateDifference, 0x4),
    ObjectMethod("Constructor(StartDate as date, EndDate as date)", ConstructDateDifferenceFromDates, 0x308),
    ObjectMethod("Calc(StartDate as date, EndDate as date) as boolean", CalcDates, 0x308),
    ObjectMethod("Constructor(StartDate as dateTime, EndDate as dateTime)", ConstructDateDifferenceFromDateTimes, 0x4 | kNeedsHost2019r2),
    ObjectMethod("Calc(StartDate as dateTime, EndDate as dateTime) as boolean", CalcDatesV, 0x4 | kNeedsHost2019r2),
};

REALmethodDefinition gSharedMethods[] = {
    Method("isLeapYear(year as integer) as boolean", isLeapYear, 0x4),
};
// clang-format on
static_assert(std::size(gProperties) == 26 && std::size(gMethods) == 5);

REALproperty gSharedProperties[] = {kDebuggingProperty};

}  // namespace

REALclassDefinition gDateDifferenceClass = [] {
  REALclassDefinition definition = {};
  definition.version = 15;
  definition.name = "DateDifferenceZKT";
  definition.dataSize = sizeof(DateDifferenceData);
  definition.destructor = reinterpret_cast<void*>(DateDifferenceDesturctor);
  definition.flags = kConsoleSafe;
  definition.properties = gProperties;
  definition.propertyCount = std::size(gProperties);
  definition.methods = gMethods;
  definition.methodCount = std::size(gMethods);
  definition.sharedProperties = gSharedProperties;
  definition.sharedPropertyCount = std::size(gSharedProperties);
  definition.sharedMethods = gSharedMethods;
  definition.sharedMethodCount = std::size(gSharedMethods);
  return definition;
}();

}  // namespace zkt
