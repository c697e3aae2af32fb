// Reference implementations for the array benchmarks: plain loops and standard algorithms, compiled with -O3 -mavx2.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/contract/plugin_interface.h"

namespace reference {

template <class Result, class Element>
Result Sum(const Element* values, std::int64_t count);

template <class Element>
std::int64_t Count(const Element* values, Element value, std::int64_t count);

// Compares integers with memcmp, and floating-point numbers in blocks.
template <class Element>
bool Equals(const Element* a, const Element* b, std::int64_t count);

template <class Element>
void Reverse(Element* values, std::int64_t count);

template <class Element>
void Sort(Element* values, std::int64_t count);

template <class Element>
void PatternDefeatingSort(Element* values, std::int64_t count);

// Runs the vector sort alone on signed keys of 4 or 8 bytes. Does nothing if there is no vector sort for this
// processor.
void VectorSort(void* keys, std::int64_t count, std::size_t keySize);

// Does nothing, so that a benchmark can measure the cost of a call.
void Nothing(const void* array1, const void* array2);

// Sorts with std::sort in the order that a delegate defines, without the plug-in's protection against inconsistent
// delegates.
void SortByInvoker(std::int64_t* values, std::int64_t count, REALobject theDelegate,
                   std::int64_t (*invoker)(REALobject, std::int64_t, std::int64_t));

}  // namespace reference
