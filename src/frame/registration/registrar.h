// Registers declarations with the host: checked, with flags adapted to the host, and stamped with its interface level.
// The host keeps the records, which are changed in place. The MyREAL names are fixed by the host's interface.
#pragma once

#include <span>

#include "frame/contract/plugin_interface.h"
#include "frame/registration/globals_module.h"

namespace zkt {

// Do nothing without a part name, or on a host without the service.
void MyREALRegisterClass(REALclassDefinition* definition);
void MyREALRegisterModule(REALmoduleDefinition* definition);

// Adapts the flags of a class and of all its members to the host version.
void FixFlags(REALclassDefinition* definition);

// Registers an extension of a host class: as an extension, or as global methods in the module on hosts that take those.
void RegisterClassExtension(REALclassDefinition* definition, GlobalsModule& module);

// Registers the global methods, and the module that contains them or earlier extensions.
void RegisterGlobalMethods(std::span<REALmethodDefinition> methods, GlobalsModule& module);

}  // namespace zkt
