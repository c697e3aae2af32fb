// Writes a plug-in's registrations as text.
#pragma once

#include <iosfwd>

#include "core/host.h"

namespace host {

// Writes a title, a line for each module, class and global method, and an indented line for each member. Two spaces
// separate the declaration of a record or member from its attributes. "like" names an earlier member with the same
// native function.
void WriteCatalogue(std::ostream& out, const Host& host);

}  // namespace host
