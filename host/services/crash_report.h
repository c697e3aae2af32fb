// Reports where a plug-in crashes. Without the report, a call to a missing service ends the process silently.
#pragma once

#include <vector>

#include "services/members.h"

namespace host {

// Installs signal handlers that print a report to standard error if this process, or a process that it forks later,
// crashes. The report shows the signal, the plug-in function that was running, the missing service that was called, if
// any, and a backtrace. The process then ends as it would have without the report.
void ReportCrashes();

// Sets the library (a handle from dlopen) whose source lines are shown in backtraces.
void SetReportedPlugin(const void* library);

// Sets the members whose functions are named in reports. They are collected before a crash, because a signal handler
// cannot allocate memory. Members that are called while the plug-in loads are not named.
void SetReportedMembers(std::vector<Member> members);

}  // namespace host
