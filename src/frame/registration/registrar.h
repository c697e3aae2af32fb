// Registers declarations with the host. Checks the declarations, adapts their flags to the host version, and sets their
// version to the host's interface level. The records are changed in place, and the host keeps pointers to them. The
// names that begin with MyREAL are fixed by the host's interface.
#pragma once

#include <span>

#include "frame/contract/plugin_interface.h"
#include "frame/registration/globals_module.h"

namespace zkt {

// Register a class or a module. Do nothing if gpartname is null or the host lacks the registration service.
void MyREALRegisterClass(REALclassDefinition* definition);
void MyREALRegisterModule(REALmoduleDefinition* definition);

// Adapts the flags of a class and of its methods and properties to the host version.
void FixFlags(REALclassDefinition* definition);

// Registers an extension of a host class. If the host accepts global methods as module members, adds the converted
// methods to the module instead.
void RegisterClassExtension(REALclassDefinition* definition, GlobalsModule& module);

// Registers the global methods, either directly or as members of the module. Also registers the module if it has a
// record.
void RegisterGlobalMethods(std::span<REALmethodDefinition> methods, GlobalsModule& module);

}  // namespace zkt
