// What a plug-in has registered, for people and for comparison: every record in the order of registration, with what
// the host would work with.
#pragma once

#include <iosfwd>
#include <string>

#include "core/host.h"

namespace host {

// Plain text, a line for each member. Native functions are numbered in the order in which they appear, so that members
// which share one can be seen.
void WriteCatalogueText(std::ostream& out, const Host& host);

// Text as code in a cell of a Markdown table: a fence is longer than every run of backticks in it, and a bar would end
// the cell.
std::string InCode(const std::string& text);

// Markdown, a table for each record.
void WriteCatalogueMarkdown(std::ostream& out, const Host& host);

}  // namespace host
