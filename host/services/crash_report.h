// Reports where a plug-in crashes. Without the report, a call to a missing service ends the process silently.
#pragma once

namespace host {

// Installs signal handlers that report crashes of this process, and of processes that it forks later, on standard
// error. The report shows the signal, the plug-in function that was running, the missing service that was called, if
// any, and a backtrace. The process then ends as it would have without the report.
void ReportCrashes();

// Sets the library (a handle from dlopen) whose source lines are shown in backtraces.
void SetReportedPlugin(const void* library);

}  // namespace host
