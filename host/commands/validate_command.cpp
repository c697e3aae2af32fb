// xojo-host validate: tries to bring a plug-in down.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "commands/commands.h"
#include "validate/validator.h"

namespace host {

int RunValidate(validate::Options options) {
  // Programs that are started are waited for, also where whoever starts this one waits for none.
  std::signal(SIGCHLD, SIG_DFL);
  // Without a time zone the C library looks for a change of the system's with every date.
  ::setenv("TZ", ":/etc/localtime", 0);
  options.library = std::filesystem::canonical(options.library);
  return validate::Validator(options, std::cout).Run() ? 0 : 1;
}

}  // namespace host
