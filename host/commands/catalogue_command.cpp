// xojo-host catalogue: what the plug-in declares to this host.
#include <iostream>

#include "commands/commands.h"
#include "core/host.h"
#include "declarations/catalogue.h"
#include "language/catalogue_text.h"
#include "services/plugin_library.h"

namespace host {

int RunCatalogue(const std::string& plugin, bool asMarkdown) {
  LoadPlugin(plugin);
  const Host& host = Host::Current();
  const Catalogue compiled(host);  // what Xojo could not compile ends the program
  (asMarkdown ? WriteCatalogueMarkdown : WriteCatalogueText)(std::cout, host);
  return 0;
}

}  // namespace host
