// Suggests corrections for misspelled names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Returns a suggestion that names the most similar candidate, such as "; did you mean SortZKT?"; empty if no candidate
// is similar.
std::string DidYouMean(std::string_view name, const std::vector<std::string_view>& candidates);

}  // namespace host
