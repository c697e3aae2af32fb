// Declaration checks for the records of classes, modules and class extensions, including their members. Findings are
// only logged and never prevent registration.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Checks a class, except for the flags and offsets that CheckTargetFlags checks.
void CheckClass(const REALclassDefinition& definition);

void CheckModule(const REALmoduleDefinition& definition);

void CheckClassExtension(const REALclassDefinition& definition);

// Logs console-safe members of a class that is not console-safe, and properties that extend beyond the end of the
// instance data.
void CheckTargetFlags(const REALclassDefinition& definition);

}  // namespace zkt
