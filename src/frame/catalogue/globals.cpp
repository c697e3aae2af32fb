// The global methods.

#include "csv/split_csv.h"
#include "dates/date_difference.h"
#include "frame/catalogue/catalogue.h"
#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "locale/date_format.h"
#include "locale/number_format.h"
#include "process/console_execute.h"
#include "process/process_control.h"
#include "process/quality_of_service.h"

namespace zkt {

namespace {

// clang-format off
REALmethodDefinition gMethods[] = {
    Method("GetQOSClassZKT as Integer",                                                                                       GetQOSClass,        kAllProjects),
    Method("SetQOSClassZKT(QOS as Integer) as Integer",                                                                       SetQOSClass,        kAllProjects),
    Method("ExitZKT(code as integer)",                                                                                        ExitZKT,            kAllProjects),
    Method("AbortZKT",                                                                                                        AbortZKT,           kAllProjects),
    Method("CrashNiceZKT",                                                                                                    CrashNice,          kAllProjects),
    Method("CrashUglyZKT",                                                                                                    CrashUgly,          kAllProjects),
    Method("SplitCommaSeparatedValuesZKT(text as string, delimiter as string = \"\", quote as string = \"\") as string()",    SplitCSV,           kAllProjects),
    Method("DifferenceZKT(extends StartDate as date, EndDate as date) as DateDifferenceZKT",                                  DifferenceZKT,      kDesktopWebConsole),
    Method("ConsoleExecuteZKT(path as string, arguments() as string, environment() as string) as integer",                    ConsoleExecuteZKT,  kDesktopWebConsole),
    Method("ConsoleExecuteZKT(path as folderitem, arguments() as string, environment() as string) as integer",                ConsoleExecuteZKTf, kDesktopWebConsole),
    Method("FormatZKT(format as string, value as double, locale as string = \"\") as string",                                 formatZKT,          kAllProjects),
    Method("CDblZKT(text as string, byref value as double, locale as string = \"\") as boolean",                              cdblZKT,            kAllProjects),
    Method("FormatDateZKT(format as string, value as date, locale as string = \"\") as string",                               formatDateZKT,      kDesktopWebConsole),
    Method("ParseDateZKT(format as string, text as string, byref value as date, locale as string = \"\") as boolean",         parseDateZKT,       kDesktopWebConsole),
    Method("DifferenceZKT(extends StartDate as dateTime, EndDate as dateTime) as DateDifferenceZKT",                          DifferenceZKTdt,    kAllProjects | kNeedsHost2019r2),
    Method("FormatDateTimeZKT(format as string, value as dateTime, locale as string = \"\") as string",                       formatDateTimeZKT,  kAllProjects | kNeedsHost2019r2),
    Method("ParseDateTimeZKT(format as string, text as string, byref value as dateTime, locale as string = \"\") as boolean", parseDateTimeZKT,   kAllProjects | kNeedsHost2019r2),
};
// clang-format on

}  // namespace

std::span<REALmethodDefinition> GlobalMethods() { return gMethods; }

}  // namespace zkt
