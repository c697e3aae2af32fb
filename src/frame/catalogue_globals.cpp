// The global methods.
#include <iterator>

#include "csv/split_csv.h"
#include "dates/date_difference.h"
#include "frame/catalogue.h"
#include "frame/rows.h"
#include "locale/date_format.h"
#include "locale/number_format.h"
#include "process/console_execute.h"
#include "process/process_control.h"
#include "process/quality_of_service.h"

namespace zkt {

namespace {

// clang-format off
REALmethodDefinition gMethods[] = {
    Method("GetQOSClassZKT as Integer", GetQOSClass, 0x4),
    Method("SetQOSClassZKT(QOS as Integer) as Integer", SetQOSClass, 0x4),
    Method("ExitZKT(code as integer)", ExitZKT, 0x4),
    Method("AbortZKT", AbortZKT, 0x4),
    Method("CrashNiceZKT", CrashNice, 0x4),
    Method("CrashUglyZKT", CrashUgly, 0x4),
    Method("SplitCommaSeparatedValuesZKT(text as string, delimiter as string = \"\", quote as string = \"\") as string()", SplitCSV, 0x4),
    Method("DifferenceZKT(extends StartDate as date, EndDate as date) as DateDifferenceZKT", DifferenceZKT, 0x308),
    Method("ConsoleExecuteZKT(path as string, arguments() as string, environment() as string) as integer", ConsoleExecuteZKT, 0x308),
    Method("ConsoleExecuteZKT(path as folderitem, arguments() as string, environment() as string) as integer", ConsoleExecuteZKTf, 0x308),
    Method("FormatZKT(format as string, value as double, locale as string = \"\") as string", formatZKT, 0x4),
    Method("CDblZKT(text as string, byref value as double, locale as string = \"\") as boolean", cdblZKT, 0x4),
    Method("FormatDateZKT(format as string, value as date, locale as string = \"\") as string", formatDateZKT, 0x308),
    Method("ParseDateZKT(format as string, text as string, byref value as date, locale as string = \"\") as boolean", parseDateZKT, 0x308),
    Method("DifferenceZKT(extends StartDate as dateTime, EndDate as dateTime) as DateDifferenceZKT", DifferenceZKTdt, 0x4 | kNeedsHost2019r2),
    Method("FormatDateTimeZKT(format as string, value as dateTime, locale as string = \"\") as string", formatDateTimeZKT, 0x4 | kNeedsHost2019r2),
    Method("ParseDateTimeZKT(format as string, text as string, byref value as dateTime, locale as string = \"\") as boolean", parseDateTimeZKT, 0x4 | kNeedsHost2019r2),
};
// clang-format on
static_assert(std::size(gMethods) == 17);

}  // namespace

std::span<REALmethodDefinition> GlobalMethods() { return gMethods; }

}  // namespace zkt
