// Portable access to the processor: CPUID, XGETBV and a per-function AVX
// target. Whole files built for wider instruction sets get their flags from
// CMake; everything else compiler-specific for the vector kernels lives here.
#pragma once

#include <cstdint>

#if defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#include <immintrin.h>
// MSVC accepts every intrinsic in any function; no per-function target needed.
#define AURIVOX_TARGET_AVX
#else
#include <cpuid.h>
#include <immintrin.h>
#define AURIVOX_TARGET_AVX __attribute__((target("avx")))
#endif

namespace vectorkernels {

struct CpuIdRegisters {
  std::uint32_t eax = 0;
  std::uint32_t ebx = 0;
  std::uint32_t ecx = 0;
  std::uint32_t edx = 0;
};

inline CpuIdRegisters CpuId(std::uint32_t leaf, std::uint32_t subleaf = 0) {
  CpuIdRegisters r;
#if defined(_MSC_VER) && !defined(__clang__)
  int words[4];
  __cpuidex(words, static_cast<int>(leaf), static_cast<int>(subleaf));
  r.eax = static_cast<std::uint32_t>(words[0]);
  r.ebx = static_cast<std::uint32_t>(words[1]);
  r.ecx = static_cast<std::uint32_t>(words[2]);
  r.edx = static_cast<std::uint32_t>(words[3]);
#else
  __cpuid_count(leaf, subleaf, r.eax, r.ebx, r.ecx, r.edx);
#endif
  return r;
}

// Extended control register 0: the register states the operating system saves.
// Faults unless CPUID leaf 1 ECX bit 27 (OSXSAVE) is set; callers check first.
inline std::uint64_t ReadXcr0() {
#if defined(_MSC_VER) && !defined(__clang__)
  return _xgetbv(0);
#else
  std::uint32_t low = 0;
  std::uint32_t high = 0;
  __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return (static_cast<std::uint64_t>(high) << 32) | low;
#endif
}

}  // namespace vectorkernels
