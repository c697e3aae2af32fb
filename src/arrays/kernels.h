// Loops over raw elements, independent of the host. On x86-64 Linux with g++, most loops are compiled for several
// processor generations, and the dynamic loader selects the version for the current processor. Elsewhere, each loop is
// compiled once.
#pragma once

#include <cstdint>

namespace zkt::kernels {

// Return the sum. Integer sums wrap modulo 2^64. Bytes are signed. Floating-point numbers are added to +0.0 strictly
// from first to last, because the order determines the rounding.
std::int64_t Sum(const std::int8_t* values, std::int64_t count);
std::int64_t Sum(const std::int32_t* values, std::int64_t count);
std::uint64_t Sum(const std::uint32_t* values, std::int64_t count);
std::uint64_t Sum(const std::uint64_t* values, std::int64_t count);
double Sum(const double* values, std::int64_t count);
double Sum(const float* values, std::int64_t count);

// Return the number of elements equal to the value. Floating-point numbers are compared by the rules of IEEE 754.
std::int64_t Count(const std::uint8_t* values, std::uint8_t value, std::int64_t count);
std::int64_t Count(const std::uint32_t* values, std::uint32_t value, std::int64_t count);
std::int64_t Count(const std::uint64_t* values, std::uint64_t value, std::int64_t count);
std::int64_t Count(const double* values, double value, std::int64_t count);
std::int64_t Count(const float* values, float value, std::int64_t count);

// Return the index of the first difference, or `count` if there is none. NaN differs from everything, even from itself.
std::int64_t FindDifference(const std::uint8_t* a, const std::uint8_t* b, std::int64_t count);
std::int64_t FindDifference(const std::uint32_t* a, const std::uint32_t* b, std::int64_t count);
std::int64_t FindDifference(const std::uint64_t* a, const std::uint64_t* b, std::int64_t count);
std::int64_t FindDifference(const double* a, const double* b, std::int64_t count);
std::int64_t FindDifference(const float* a, const float* b, std::int64_t count);

// Reverse the elements in place.
void Reverse(std::uint8_t* values, std::int64_t count);
void Reverse(std::uint32_t* values, std::int64_t count);
void Reverse(std::uint64_t* values, std::int64_t count);

}  // namespace zkt::kernels
