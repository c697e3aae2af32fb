#include "graphics/graphics_handle.h"

#include "frame/contract/host_services.h"
#include "runtime/debug_log.h"

namespace zkt {

namespace {

// The handle type for a Graphics object's drawing context.
constexpr std::int64_t kContextHandle = 5;

}  // namespace

DrawingContext getCGContextRef(REALgraphics g) {
  Trace("getCGContextRef", static_cast<const void*>(g));
  if (void* const handle = REALLoadObjectMethod(g, "Handle(type As Graphics.HandleTypes) as Ptr"))
    return reinterpret_cast<void* (*)(REALgraphics, std::int64_t)>(handle)(g, kContextHandle);
  // Older hosts return the handle as a number.
  if (void* const handle = REALLoadObjectMethod(g, "Handle(type As Integer) as Integer"))
    return reinterpret_cast<DrawingContext>(
        reinterpret_cast<std::intptr_t (*)(REALgraphics, std::int64_t)>(handle)(g, kContextHandle));
  Trace("Query for graphics.handle failed.");
  return nullptr;
}

}  // namespace zkt
