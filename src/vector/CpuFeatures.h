// The processor-feature mask and its decoding from CPUID and XCR0. Decoding is
// a pure function of a register snapshot so that any processor can be modelled.
#pragma once

#include <cstdint>

#include "Processor.h"

namespace vectorkernels {

using CpuFeatureMask = std::uint64_t;

constexpr CpuFeatureMask kFeatureMmx = 0x1;
constexpr CpuFeatureMask kFeatureSse = 0x2;
constexpr CpuFeatureMask kFeatureSse2 = 0x4;
constexpr CpuFeatureMask kFeatureSse3 = 0x8;
constexpr CpuFeatureMask kFeatureSsse3 = 0x10;
constexpr CpuFeatureMask kFeatureMovbe = 0x20;
constexpr CpuFeatureMask kFeatureSse41 = 0x40;
constexpr CpuFeatureMask kFeatureSse42 = 0x80;
constexpr CpuFeatureMask kFeatureAvx = 0x100;
constexpr CpuFeatureMask kFeatureAvxState = 0x200;
constexpr CpuFeatureMask kFeatureAes = 0x400;
constexpr CpuFeatureMask kFeaturePclmulqdq = 0x800;
constexpr CpuFeatureMask kFeatureRdrand = 0x2000;
constexpr CpuFeatureMask kFeatureF16c = 0x4000;
// FMA, AVX2, BMI1 and BMI2 together.
constexpr CpuFeatureMask kFeatureAvx2Group = 0x8000;
constexpr CpuFeatureMask kFeatureAdx = 0x10000;
constexpr CpuFeatureMask kFeatureRdseed = 0x20000;
constexpr CpuFeatureMask kFeaturePrefetchw = 0x40000;
constexpr CpuFeatureMask kFeatureSha = 0x80000;
constexpr CpuFeatureMask kFeatureAvx512F = 0x100000;
constexpr CpuFeatureMask kFeatureAvx512Cd = 0x200000;
constexpr CpuFeatureMask kFeatureAvx512Er = 0x400000;
constexpr CpuFeatureMask kFeatureAvx512Pf = 0x800000;
constexpr CpuFeatureMask kFeatureAvx512Bw = 0x1000000;
constexpr CpuFeatureMask kFeatureAvx512Dq = 0x2000000;
constexpr CpuFeatureMask kFeatureAvx512Vl = 0x4000000;
constexpr CpuFeatureMask kFeatureAvx512Vbmi = 0x8000000;
constexpr CpuFeatureMask kFeatureMpx = 0x10000000;
constexpr CpuFeatureMask kFeatureAvx5124Fmaps = 0x20000000;
constexpr CpuFeatureMask kFeatureAvx5124Vnniw = 0x40000000;
// Family 0xB model 1: the first many-core coprocessor.
constexpr CpuFeatureMask kFeatureCoprocessor = 0x80000000;
constexpr CpuFeatureMask kFeatureAvx512Ifma = 0x100000000;
constexpr CpuFeatureMask kFeatureAvx512State = 0x200000000;
constexpr CpuFeatureMask kFeatureLeaf7Ecx14 = 0x400000000;
constexpr CpuFeatureMask kFeatureLeaf7Ecx12 = 0x800000000;

// The CPUID leaves (and XCR0) that detection reads. Leaves beyond the highest
// one the processor reports are ignored when decoding.
struct CpuIdSnapshot {
  CpuIdRegisters leaf0;  // eax: highest standard leaf; vendor in ebx, edx, ecx
  CpuIdRegisters leaf1;
  CpuIdRegisters leaf7;         // sub-leaf 0
  CpuIdRegisters leaf80000000;  // eax: highest extended leaf
  CpuIdRegisters leaf80000001;
  std::uint64_t xcr0 = 0;  // 0 when the OS has not enabled XSAVE
};

// Queries the running processor.
CpuIdSnapshot ReadCpuIdSnapshot();

CpuFeatureMask DecodeCpuFeatures(const CpuIdSnapshot& snapshot);

// True for the vendor string "GenuineIntel" in leaf 0.
bool IsGenuineIntel(const CpuIdRegisters& leaf0);

}  // namespace vectorkernels
