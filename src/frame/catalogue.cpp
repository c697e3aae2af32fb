// The order of registration of classes and modules.
#include "frame/catalogue.h"

namespace zkt {

std::span<const ClassOrModule> DeclarationsSince2013() { return {}; }

REALclassDefinition* GraphicsExtension() { return nullptr; }

std::span<REALclassDefinition* const> Classes() { return {}; }

}  // namespace zkt
