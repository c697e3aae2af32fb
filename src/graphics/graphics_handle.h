// What the host draws with.
#pragma once

#include "frame/contract/plugin_interface.h"
#include "platform/text_system.h"

namespace zkt {

// The drawing context of a host's Graphics object, which stays the host's; null if it has none or the host cannot tell.
DrawingContext getCGContextRef(REALgraphics g);

}  // namespace zkt
