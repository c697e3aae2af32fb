// Everything that the plug-in declares to the host, in registration order. The tables are mutable: registration stamps
// versions and adapts flags in place, and the host keeps the records. Rows that hosts before 2019 release 2 cannot
// compile are at the end of their table and carry kNeedsHost2019r2.
#pragma once

#include <span>
#include <variant>

#include "frame/contract/plugin_interface.h"

namespace zkt {

using ClassOrModule = std::variant<REALclassDefinition*, REALmoduleDefinition*>;

// For hosts from 2013 on. Registered before everything else.
std::span<const ClassOrModule> DeclarationsSince2013();

// Returns the extension of the host's class Graphics, or null if there is none.
REALclassDefinition* GraphicsExtension();

// For every host.
std::span<REALclassDefinition* const> Classes();
std::span<REALmethodDefinition> GlobalMethods();

}  // namespace zkt
