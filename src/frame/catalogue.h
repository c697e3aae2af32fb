// What the plug-in declares to the host, in the order of registration.
// The tables are mutable: registration stamps versions and adapts flags in place, and the host keeps the records.
#pragma once

#include <span>

#include "frame/plugin_interface.h"

namespace zkt {

std::span<REALmethodDefinition> GlobalMethods();

}  // namespace zkt
