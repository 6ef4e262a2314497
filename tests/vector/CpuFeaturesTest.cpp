#include "CpuFeatures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "DispatchState.h"

namespace vectorkernels {
namespace {

// A processor that reports every leaf detection reads, with no feature bits.
CpuIdSnapshot AllLeaves() {
  CpuIdSnapshot s;
  s.leaf0.eax = 0x16;
  s.leaf80000000.eax = 0x80000008;
  return s;
}

CpuIdRegisters Leaf0Vendor(const char (&vendor)[13]) {
  CpuIdRegisters r;
  std::memcpy(&r.ebx, vendor + 0, 4);
  std::memcpy(&r.edx, vendor + 4, 4);
  std::memcpy(&r.ecx, vendor + 8, 4);
  return r;
}

struct SingleBit {
  const char* name;
  CpuIdRegisters CpuIdSnapshot::*leaf;
  std::uint32_t CpuIdRegisters::*reg;
  int bit;
  CpuFeatureMask feature;
};

// Spot checks across the leaves and registers the decoder reads.
constexpr SingleBit kSingleBits[] = {
    {"SSE2", &CpuIdSnapshot::leaf1, &CpuIdRegisters::edx, 26, kFeatureSse2},
    {"MOVBE", &CpuIdSnapshot::leaf1, &CpuIdRegisters::ecx, 22, kFeatureMovbe},
    {"AVX", &CpuIdSnapshot::leaf1, &CpuIdRegisters::ecx, 28, kFeatureAvx},
    {"PREFETCHW", &CpuIdSnapshot::leaf80000001, &CpuIdRegisters::ecx, 8, kFeaturePrefetchw},
    {"AVX512F", &CpuIdSnapshot::leaf7, &CpuIdRegisters::ebx, 16, kFeatureAvx512F},
    {"AVX512VBMI", &CpuIdSnapshot::leaf7, &CpuIdRegisters::ecx, 1, kFeatureAvx512Vbmi},
    {"leaf 7 ECX 12", &CpuIdSnapshot::leaf7, &CpuIdRegisters::ecx, 12, kFeatureLeaf7Ecx12},
};

TEST(DecodeCpuFeatures, EachSingleRegisterBitSetsItsFeatureAlone) {
  for (const SingleBit& b : kSingleBits) {
    CpuIdSnapshot s = AllLeaves();
    (s.*b.leaf).*b.reg = 1u << b.bit;
    EXPECT_EQ(DecodeCpuFeatures(s), b.feature) << b.name;
  }
}

TEST(DecodeCpuFeatures, AvxStateNeedsOsxsaveAvxAndBothXcr0Bits) {
  CpuIdSnapshot s = AllLeaves();
  s.leaf1.ecx = (1u << 27) | (1u << 28);
  s.xcr0 = 0x6;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeatureAvx | kFeatureAvxState);
  s.xcr0 = 0x2;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeatureAvx) << "YMM state not saved";
  s.xcr0 = 0x4;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeatureAvx) << "XMM state not saved";
  s.xcr0 = 0x6;
  s.leaf1.ecx = 1u << 28;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeatureAvx) << "without OSXSAVE XCR0 means nothing";
  s.leaf1.ecx = 1u << 27;
  EXPECT_EQ(DecodeCpuFeatures(s), 0u) << "state without the AVX instructions";
}

TEST(DecodeCpuFeatures, Avx512StateNeedsOsxsaveAndTheThreeZmmXcr0Bits) {
  CpuIdSnapshot s = AllLeaves();
  s.leaf1.ecx = 1u << 27;
  s.xcr0 = 0xE0;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeatureAvx512State) << "XMM/YMM bits are not part of it";
  for (std::uint64_t missing : {0x20u, 0x40u, 0x80u}) {
    s.xcr0 = 0xE6 & ~missing;
    EXPECT_EQ(DecodeCpuFeatures(s) & kFeatureAvx512State, 0u) << "XCR0 " << s.xcr0;
  }
  s.leaf1.ecx = 0;
  s.xcr0 = 0xE6;
  EXPECT_EQ(DecodeCpuFeatures(s), 0u);
}

TEST(DecodeCpuFeatures, Avx2GroupNeedsFmaAvx2Bmi1AndBmi2) {
  constexpr std::uint32_t kFma = 1u << 12;
  constexpr std::uint32_t kGroupEbx = (1u << 5) | (1u << 3) | (1u << 8);
  CpuIdSnapshot s = AllLeaves();
  s.leaf1.ecx = kFma;
  s.leaf7.ebx = kGroupEbx;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeatureAvx2Group);
  for (int bit : {5, 3, 8}) {
    s.leaf7.ebx = kGroupEbx & ~(1u << bit);
    EXPECT_EQ(DecodeCpuFeatures(s), 0u) << "leaf 7 EBX bit " << bit << " missing";
  }
  s.leaf1.ecx = 0;
  s.leaf7.ebx = kGroupEbx;
  EXPECT_EQ(DecodeCpuFeatures(s), 0u) << "FMA missing";
}

TEST(DecodeCpuFeatures, Leaf7CountsOnlyWhenTheHighestStandardLeafReachesIt) {
  CpuIdSnapshot s = AllLeaves();
  s.leaf1.ecx = 1u << 12;  // FMA, for the AVX2 group
  s.leaf7.ebx = s.leaf7.ecx = s.leaf7.edx = 0xFFFFFFFF;
  s.leaf0.eax = 6;
  EXPECT_EQ(DecodeCpuFeatures(s), 0u);
  s.leaf0.eax = 7;
  EXPECT_NE(DecodeCpuFeatures(s) & kFeatureAvx2Group, 0u);
  EXPECT_NE(DecodeCpuFeatures(s) & kFeatureAvx512Vl, 0u);
}

TEST(DecodeCpuFeatures, PrefetchwCountsOnlyWhenTheExtendedLeafExists) {
  CpuIdSnapshot s = AllLeaves();
  s.leaf80000001.ecx = 1u << 8;
  s.leaf80000000.eax = 0x80000000;
  EXPECT_EQ(DecodeCpuFeatures(s), 0u);
  s.leaf80000000.eax = 0x80000001;
  EXPECT_EQ(DecodeCpuFeatures(s), kFeaturePrefetchw);
}

TEST(DecodeCpuFeatures, CoprocessorMarkerIsFamilyBModel1WhateverTheStepping) {
  CpuIdSnapshot s = AllLeaves();
  for (std::uint32_t eax : {0xB10u, 0xB1Fu, 0xF000B13u}) {
    s.leaf1.eax = eax;
    EXPECT_EQ(DecodeCpuFeatures(s), kFeatureCoprocessor) << std::hex << eax;
  }
  for (std::uint32_t eax : {0xB20u, 0xA10u, 0x50654u, 0x0u}) {
    s.leaf1.eax = eax;
    EXPECT_EQ(DecodeCpuFeatures(s), 0u) << std::hex << eax;
  }
}

TEST(IsGenuineIntel, ComparesTheVendorInEbxEdxEcxOrder) {
  EXPECT_TRUE(IsGenuineIntel(Leaf0Vendor("GenuineIntel")));
  EXPECT_FALSE(IsGenuineIntel(Leaf0Vendor("AuthenticAMD")));
  EXPECT_FALSE(IsGenuineIntel(Leaf0Vendor("GenuineIotel")));
  CpuIdRegisters swapped = Leaf0Vendor("GenuineIntel");
  std::swap(swapped.ecx, swapped.edx);
  EXPECT_FALSE(IsGenuineIntel(swapped));
}

TEST(DetectCpuFeatures, ReportsAndKeepsTheRunningProcessorsMask) {
  CpuFeatureMask first = 0;
  ASSERT_EQ(DetectCpuFeatures(&first), 1);
  EXPECT_EQ(first, DecodeCpuFeatures(ReadCpuIdSnapshot()));
  // Every x86-64 processor has MMX, SSE and SSE2.
  EXPECT_EQ(first & 0x7, 0x7u);
  CpuFeatureMask second = 0;
  ASSERT_EQ(DetectCpuFeatures(&second), 1);
  EXPECT_EQ(second, first);
}

}  // namespace
}  // namespace vectorkernels
