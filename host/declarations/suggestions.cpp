#include "declarations/suggestions.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "frame/catalogue/declaration_syntax.h"

namespace host {

namespace {

// Returns how many characters must be inserted, removed or replaced to turn one name into the other.
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const bool isSame = zkt::IsSameName(a.substr(i, 1), b.substr(j, 1));
      const std::size_t replaced = diagonal + (isSame ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string DidYouMean(std::string_view name, const std::vector<std::string_view>& candidates) {
  std::size_t best = 1 + name.size() / 3;
  std::string_view found;
  for (const std::string_view candidate : candidates) {
    if (zkt::IsSameName(candidate, name)) continue;
    // The most common mistake is to omit the suffix that a plug-in's names share.
    const bool isPrefix = name.size() > 2 && zkt::IsSameName(candidate.substr(0, name.size()), name);
    const std::size_t distance = isPrefix ? 1 : EditDistance(name, candidate);
    if (distance >= best) continue;
    best = distance;
    found = candidate;
  }
  return found.empty() ? "" : "; did you mean " + std::string(found) + "?";
}

}  // namespace host
