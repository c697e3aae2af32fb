// Host dates, read by the names of their properties.
#pragma once

#include "frame/plugin_interface.h"

namespace zkt {

// The second count of a Date, its value for ordering and differences; 0.0 when the host cannot tell.
double GetTotalSeconds(REALdate date);

// The second count of a DateTime; 0.0 when the host cannot tell, nil included.
double GetDateTimeSecondsFrom1970(REALdateTime dateTime);

}  // namespace zkt
