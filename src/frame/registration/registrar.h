// Hands declarations to the host: checked, with flags as the running host understands them, and stamped with its
// interface level. The host keeps the records, which are changed in place.
#pragma once

#include <span>

#include "frame/contract/plugin_interface.h"
#include "frame/registration/globals_module.h"

namespace zkt {

// Without a part name nothing is registered. A host without the service gets nothing.
void MyREALRegisterClass(REALclassDefinition* definition);
void MyREALRegisterModule(REALmoduleDefinition* definition);

// Adapts the flags of a class and of all its members to the host version.
void FixFlags(REALclassDefinition* definition);

// An extension of a host class: as such, or as global methods of the module for the hosts that take those.
void RegisterClassExtension(REALclassDefinition* definition, GlobalsModule& module);

// The global methods, and the module that holds them or what came before.
void RegisterGlobalMethods(std::span<REALmethodDefinition> methods, GlobalsModule& module);

}  // namespace zkt
