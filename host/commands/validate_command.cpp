// xojo-host validate: tries to bring a plug-in down.
#include <iostream>

#include "commands/commands.h"

namespace host {

int RunValidate(const validate::Options& options) { return validate::Validator(options, std::cout).Run() ? 0 : 1; }

}  // namespace host
