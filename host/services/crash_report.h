// Reports where a plug-in crashes. Without this, calling a service that the host lacks ends the process silently.
#pragma once

namespace host {

// From now on a crash of this process, and of processes that it forks, is reported on standard error: the signal, the
// entry of the plug-in that was running, a missing service that was called, and a backtrace. The process then ends as
// it would have ended without the report.
void ReportCrashes();

// Sets the library (a handle from dlopen) whose source lines are shown in backtraces.
void SetReportedPlugin(const void* library);

}  // namespace host
