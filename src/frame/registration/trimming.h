// Shortens the tables for hosts that cannot compile the last rows.
#pragma once

#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// On hosts before 2019 release 2, removes rows with the kNeedsHost2019r2 flag from the end of each table. Clears this
// flag in all remaining rows.
void TrimForHost(REALclassDefinition* definition);
void TrimForHost(REALmoduleDefinition* definition);
std::span<REALmethodDefinition> TrimForHost(std::span<REALmethodDefinition> methods);

}  // namespace zkt
