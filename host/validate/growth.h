// How the time of a call grows with its data.
#pragma once

#include <cstdint>
#include <optional>

#include "declarations/catalogue.h"
#include "validate/entries.h"

namespace host::validate {

// The shapes in which data comes: arrays in order or not, texts of one repeated word.
extern const std::int64_t kDataShapes;

// The power of the size of its texts and arrays with which the processor time of a method grows: 1 if twice the data
// take twice the time. Measured over four doublings. Nothing for an entry that takes no data.
std::optional<double> MeasureGrowth(const Catalogue& catalogue, const Entry& entry, std::int64_t shape);

}  // namespace host::validate
