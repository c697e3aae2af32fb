// Asks an x86-64 processor directly which instruction sets it supports, because the compilers' own detection functions
// are not available with every C library that the plug-in is built for.
#include <cpuid.h>

#include "arrays/vector_sort.h"
#include "arrays/vector_sort_sets.h"

namespace zkt::vector_sort {

namespace {

struct Registers {
  unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
};

// Returns the CPUID registers for a leaf, or zeros if the processor does not have the leaf.
Registers Identify(unsigned leaf) {
  Registers is;
  __get_cpuid_count(leaf, 0, &is.eax, &is.ebx, &is.ecx, &is.edx);
  return is;
}

bool HasAll(unsigned value, unsigned bits) { return (value & bits) == bits; }

// Returns whether the operating system saves these register state components (bits of XCR0) on a context switch.
bool DoesSystemSave(unsigned parts) {
  if (!HasAll(Identify(1).ecx, bit_OSXSAVE)) return false;
  unsigned saved = 0, upper = 0;
  __asm__("xgetbv" : "=a"(saved), "=d"(upper) : "c"(0));
  return HasAll(saved, parts);
}

constexpr unsigned kVectors256 = 0x6;
constexpr unsigned kVectors512 = 0xE6;

// Each function below checks the feature bits for all instruction set options that its vector sort file is compiled
// with.
bool HasSse4() { return HasAll(Identify(1).ecx, bit_SSSE3 | bit_SSE4_1 | bit_SSE4_2 | bit_POPCNT); }

bool HasAvx2() {
  return HasSse4() && DoesSystemSave(kVectors256) && HasAll(Identify(1).ecx, bit_AVX | bit_FMA | bit_F16C) &&
         HasAll(Identify(7).ebx, bit_AVX2 | bit_BMI | bit_BMI2);
}

// Returns true only on Intel processors. On AMD processors with these instructions, storing selected lanes of a
// register costs more time than wider vectors save.
[[maybe_unused]] bool HasFastAvx512() {
  const Registers maker = Identify(0);
  return maker.ebx == signature_INTEL_ebx && maker.ecx == signature_INTEL_ecx && maker.edx == signature_INTEL_edx &&
         HasAvx2() && DoesSystemSave(kVectors512) &&
         HasAll(Identify(7).ebx, bit_AVX512F | bit_AVX512BW | bit_AVX512CD | bit_AVX512DQ | bit_AVX512VL);
}

constexpr KeySorter kSorters[] = {
// AVX-512 is not used on macOS, because the system enables the wide registers for a thread only on first use, and older
// macOS versions lose the mask registers when a signal arrives.
#if !defined(__APPLE__)
    {"AVX-512", HasFastAvx512, SortAvx512, SortAvx512, true, true},
#endif
    {"AVX2", HasAvx2, SortAvx2, SortAvx2, true, false},
    {"SSE4.2", HasSse4, SortSse4, SortSse4, false, false},
};

}  // namespace

std::span<const KeySorter> KeySorters() { return kSorters; }

}  // namespace zkt::vector_sort
