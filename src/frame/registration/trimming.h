// Shortens the tables for hosts that cannot compile their last rows.
#pragma once

#include <cstdint>
#include <span>

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Removes the marked rows at the end of each table on hosts before 2019 release 2, and clears the mark of all others.
void TrimForHost(REALclassDefinition* definition);
void TrimForHost(REALmoduleDefinition* definition);
std::span<REALmethodDefinition> TrimForHost(std::span<REALmethodDefinition> methods);

}  // namespace zkt
