// xojo-host validate: tries to bring a plug-in down.
#include <filesystem>
#include <iostream>

#include "commands/commands.h"
#include "validate/validator.h"

namespace host {

int RunValidate(validate::Options options) {
  options.library = std::filesystem::canonical(options.library);
  return validate::Validator(options, std::cout).Run() ? 0 : 1;
}

}  // namespace host
