#include "dates/date_objects.h"

#include "frame/host_services.h"
#include "runtime/debug_log.h"

namespace zkt {

double GetTotalSeconds(REALdate date) {
  double seconds = 0.0;
  REALGetPropValueDouble(reinterpret_cast<REALobject>(date), "TotalSeconds", &seconds);
  return seconds;
}

double GetDateTimeSecondsFrom1970(REALdateTime dateTime) {
  double seconds = 0.0;
  if (!REALGetPropValueDouble(reinterpret_cast<REALobject>(dateTime), "SecondsFrom1970", &seconds))
    Trace("Failed to read SecondsFrom1970 property.");
  return seconds;
}

}  // namespace zkt
