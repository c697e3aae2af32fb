// Suggests corrections for misspelled names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Returns "; did you mean SortZKT?" with the most similar candidate; empty if no candidate is similar.
std::string DidYouMean(std::string_view name, const std::vector<std::string_view>& candidates);

}  // namespace host
