// What a plug-in has registered, for people and for comparison: every record in the order of registration, with what
// the host would work with.
#pragma once

#include <iosfwd>

#include "core/host.h"

namespace host {

// Plain text, a line for each member. Native functions are numbered in the order in which they appear, so that members
// which share one can be seen.
void WriteCatalogueText(std::ostream& out, const Host& host);

// Markdown, a table for each record.
void WriteCatalogueMarkdown(std::ostream& out, const Host& host);

}  // namespace host
