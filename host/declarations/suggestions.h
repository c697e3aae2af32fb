// What somebody who misspelled a name may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host {

// "; did you mean SortZKT?" with the most similar name; empty if none is similar.
std::string DidYouMean(std::string_view name, const std::vector<std::string_view>& candidates);

}  // namespace host
