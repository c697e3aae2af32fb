// What a plug-in has registered with this host as text.
#pragma once

#include <iosfwd>

#include "core/host.h"

namespace host {

// Writes a title, a line for each module, class and global method, and an indented line for each member. Two spaces
// stand between what identifies a record or member and its attributes. "like" names the member that the same native
// function has served before.
void WriteCatalogue(std::ostream& out, const Host& host);

}  // namespace host
