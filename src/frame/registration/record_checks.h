// Declaration checks for the records of classes, modules and class extensions, including their members. Findings are
// only logged. They never prevent registration.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// Checks a class, except for the flags of its members, which CheckTargetFlags checks.
void CheckClass(const REALclassDefinition& definition);

void CheckModule(const REALmoduleDefinition& definition);

void CheckClassExtension(const REALclassDefinition& definition);

// Checks for members that only console applications may use in a class that others may use too, and for instance data
// beyond the end of the object.
void CheckTargetFlags(const REALclassDefinition& definition);

}  // namespace zkt
