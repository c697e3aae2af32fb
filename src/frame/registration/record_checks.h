// Looks for mistakes in the records of classes, modules and class extensions, their members included.
// Findings are only logged: whatever is found, the record is registered.
#pragma once

#include "frame/contract/plugin_interface.h"

namespace zkt {

// A class; the flags of its members are looked at by CheckTargetFlags.
void CheckClass(const REALclassDefinition& definition);

void CheckModule(const REALmoduleDefinition& definition);

void CheckClassExtension(const REALclassDefinition& definition);

// Members that only console applications may use, in a class that others may use too; and instance data that would lie
// beyond the end.
void CheckTargetFlags(const REALclassDefinition& definition);

}  // namespace zkt
