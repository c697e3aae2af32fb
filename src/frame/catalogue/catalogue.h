// Everything that the plug-in declares to the host, in registration order. The tables are mutable, because registration
// sets versions and adapts flags in place. The host keeps pointers to the records. Rows that hosts before 2019 release
// 2 cannot compile are at the end of their tables and have the kNeedsHost2019r2 flag.
#pragma once

#include <span>
#include <variant>

#include "frame/contract/plugin_interface.h"

namespace zkt {

using ClassOrModule = std::variant<REALclassDefinition*, REALmoduleDefinition*>;

// Returns the declarations for hosts of version 2013 or later. They are registered before everything else.
std::span<const ClassOrModule> DeclarationsSince2013();

// Returns the extension of the host's Graphics class, or null if there is none.
REALclassDefinition* GraphicsExtension();

// Return the declarations for hosts of every version.
std::span<REALclassDefinition* const> Classes();
std::span<REALmethodDefinition> GlobalMethods();

}  // namespace zkt
