// The functions that sort keys, two for each instruction set. A call crashes if the processor lacks the function's
// instruction set.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zkt::vector_sort {

void SortSse4(std::int32_t* keys, std::size_t count);
void SortSse4(std::int64_t* keys, std::size_t count);
void SortAvx2(std::int32_t* keys, std::size_t count);
void SortAvx2(std::int64_t* keys, std::size_t count);
void SortAvx512(std::int32_t* keys, std::size_t count);
void SortAvx512(std::int64_t* keys, std::size_t count);
void SortNeon(std::int32_t* keys, std::size_t count);
void SortNeon(std::int64_t* keys, std::size_t count);

}  // namespace zkt::vector_sort
