// The DateDifferenceZKT class.
#include "dates/date_difference.h"

#include <iterator>

#include "frame/catalogue/debugging_property.h"
#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "frame/catalogue/tables.h"

namespace zkt {

namespace {

// clang-format off
REALproperty gProperties[] = {
    FieldProperty("Month",       "Integer", ZKT_FIELD(DateDifferenceData, result.month),  kReadWrite, kObjectProperty),
    FieldProperty("Year",        "Integer", ZKT_FIELD(DateDifferenceData, result.year),   kReadWrite, kObjectProperty),
    FieldProperty("Day",         "Integer", ZKT_FIELD(DateDifferenceData, result.day),    kReadWrite, kObjectProperty),
    FieldProperty("Hour",        "Integer", ZKT_FIELD(DateDifferenceData, result.hour),   kReadWrite, kObjectProperty),
    FieldProperty("Second",      "Integer", ZKT_FIELD(DateDifferenceData, result.second), kReadWrite, kObjectProperty),
    FieldProperty("Minute",      "Integer", ZKT_FIELD(DateDifferenceData, result.minute), kReadWrite, kObjectProperty),
    FieldProperty("Swap",        "Boolean", ZKT_FIELD(DateDifferenceData, swap),          kReadWrite, kObjectProperty),
    FieldProperty("Ready",       "Boolean", ZKT_FIELD(DateDifferenceData, ready),         kReadWrite, kObjectProperty),
    FieldProperty("StartDate",   "Variant", ZKT_FIELD(DateDifferenceData, startDate),     kReadWrite, kObjectProperty),
    FieldProperty("EndDate",     "Variant", ZKT_FIELD(DateDifferenceData, endDate),       kReadWrite, kObjectProperty),
    FieldProperty("StartMonth",  "Integer", ZKT_FIELD(DateDifferenceData, start.month),   kReadWrite, kObjectProperty),
    FieldProperty("StartYear",   "Integer", ZKT_FIELD(DateDifferenceData, start.year),    kReadWrite, kObjectProperty),
    FieldProperty("StartDay",    "Integer", ZKT_FIELD(DateDifferenceData, start.day),     kReadWrite, kObjectProperty),
    FieldProperty("StartHour",   "Integer", ZKT_FIELD(DateDifferenceData, start.hour),    kReadWrite, kObjectProperty),
    FieldProperty("StartSecond", "Integer", ZKT_FIELD(DateDifferenceData, start.second),  kReadWrite, kObjectProperty),
    FieldProperty("StartMinute", "Integer", ZKT_FIELD(DateDifferenceData, start.minute),  kReadWrite, kObjectProperty),
    FieldProperty("EndMonth",    "Integer", ZKT_FIELD(DateDifferenceData, end.month),     kReadWrite, kObjectProperty),
    FieldProperty("EndYear",     "Integer", ZKT_FIELD(DateDifferenceData, end.year),      kReadWrite, kObjectProperty),
    FieldProperty("EndDay",      "Integer", ZKT_FIELD(DateDifferenceData, end.day),       kReadWrite, kObjectProperty),
    FieldProperty("EndHour",     "Integer", ZKT_FIELD(DateDifferenceData, end.hour),      kReadWrite, kObjectProperty),
    FieldProperty("EndSecond",   "Integer", ZKT_FIELD(DateDifferenceData, end.second),    kReadWrite, kObjectProperty),
    FieldProperty("EndMinute",   "Integer", ZKT_FIELD(DateDifferenceData, end.minute),    kReadWrite, kObjectProperty),
    FieldProperty("TotalDay",    "Integer", ZKT_FIELD(DateDifferenceData, totalDay),      kReadWrite, kObjectProperty),
    AccessorProperty("StartTotalSeconds", "Double", getStartTotalSeconds, setStartTotalSeconds, kObjectProperty),
    AccessorProperty("EndTotalSeconds",   "Double", getEndTotalSeconds,   setEndTotalSeconds,   kObjectProperty),
    AccessorProperty("TotalSeconds",      "Double", getTotalSeconds,      setTotalSeconds,      kObjectProperty),
};

REALmethodDefinition gMethods[] = {
    ObjectMethod("Constructor",                                               ConstructDateDifference,              kAllProjects),
    ObjectMethod("Constructor(StartDate as date, EndDate as date)",           ConstructDateDifferenceFromDates,     kDesktopWebConsole),
    ObjectMethod("Calc(StartDate as date, EndDate as date) as boolean",       CalcDates,                            kDesktopWebConsole),
    ObjectMethod("Constructor(StartDate as dateTime, EndDate as dateTime)",   ConstructDateDifferenceFromDateTimes, kAllProjects | kNeedsHost2019r2),
    ObjectMethod("Calc(StartDate as dateTime, EndDate as dateTime) as boolean", CalcDatesV,                         kAllProjects | kNeedsHost2019r2),
};

REALmethodDefinition gSharedMethods[] = {
    Method("isLeapYear(year as integer) as boolean", isLeapYear, kAllProjects),
};
// clang-format on

REALproperty gSharedProperties[] = {DebuggingProperty()};

}  // namespace

REALclassDefinition* DateDifferenceClass() {
  static REALclassDefinition& record = gDateDifferenceClass = {
      .version = kCurrentREALControlVersion,
      .name = "DateDifferenceZKT",
      .dataSize = sizeof(DateDifferenceData),
      .destructor = reinterpret_cast<void*>(DateDifferenceDesturctor),
      .properties = gProperties,
      .propertyCount = std::size(gProperties),
      .methods = gMethods,
      .methodCount = std::size(gMethods),
      .flags = kAllProjects,
      .sharedProperties = gSharedProperties,
      .sharedPropertyCount = std::size(gSharedProperties),
      .sharedMethods = gSharedMethods,
      .sharedMethodCount = std::size(gSharedMethods),
  };
  return &record;
}

}  // namespace zkt
