#include "CpuFeatures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "DispatchState.h"

namespace vectorkernels {
namespace {

constexpr std::uint32_t kOsxsave = 1u << 27;
constexpr std::uint32_t kAvx = 1u << 28;
constexpr std::uint32_t kFma = 1u << 12;
constexpr std::uint32_t kAvx2Ebx = (1u << 5) | (1u << 3) | (1u << 8);  // AVX2, BMI1, BMI2
constexpr std::uint32_t kExt = 0x80000008;

// One processor a row: the registers detection reads and the features they mean.
struct Row {
  const char* name;
  std::uint32_t maxLeaf, leaf1Eax, leaf1Ecx, leaf1Edx, leaf7Ebx, leaf7Ecx, maxExtended, ext1Ecx;
  std::uint64_t xcr0;
  CpuFeatureMask expected;
};

const Row kRows[] = {
    {"SSE2", 7, 0, 0, 1u << 26, 0, 0, kExt, 0, 0, kFeatureSse2},
    {"MOVBE", 7, 0, 1u << 22, 0, 0, 0, kExt, 0, 0, kFeatureMovbe},
    {"AVX512F", 7, 0, 0, 0, 1u << 16, 0, kExt, 0, 0, kFeatureAvx512F},
    {"AVX512VBMI", 7, 0, 0, 0, 0, 1u << 1, kExt, 0, 0, kFeatureAvx512Vbmi},
    {"leaf 7 ECX 12", 7, 0, 0, 0, 0, 1u << 12, kExt, 0, 0, kFeatureLeaf7Ecx12},
    {"leaf 7 beyond the highest leaf", 6, 0, kFma, 0, ~0u, ~0u, kExt, 0, 0, 0},
    {"PREFETCHW", 7, 0, 0, 0, 0, 0, 0x80000001, 1u << 8, 0, kFeaturePrefetchw},
    {"PREFETCHW without its leaf", 7, 0, 0, 0, 0, 0, 0x80000000, 1u << 8, 0, 0},
    {"AVX state", 7, 0, kOsxsave | kAvx, 0, 0, 0, kExt, 0, 0x6, kFeatureAvx | kFeatureAvxState},
    {"YMM state not saved", 7, 0, kOsxsave | kAvx, 0, 0, 0, kExt, 0, 0x2, kFeatureAvx},
    {"XMM state not saved", 7, 0, kOsxsave | kAvx, 0, 0, 0, kExt, 0, 0x4, kFeatureAvx},
    {"XCR0 without OSXSAVE", 7, 0, kAvx, 0, 0, 0, kExt, 0, 0xE6, kFeatureAvx},
    {"state without AVX", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0x6, 0},
    {"ZMM state", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0xE0, kFeatureAvx512State},
    {"ZMM state without opmask", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0xC6, 0},
    {"ZMM state without upper ZMM", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0xA6, 0},
    {"ZMM state without high ZMM", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0x66, 0},
    {"AVX2 group", 7, 0, kFma, 0, kAvx2Ebx, 0, kExt, 0, 0, kFeatureAvx2Group},
    {"AVX2 group without FMA", 7, 0, 0, 0, kAvx2Ebx, 0, kExt, 0, 0, 0},
    {"AVX2 group without AVX2", 7, 0, kFma, 0, kAvx2Ebx & ~(1u << 5), 0, kExt, 0, 0, 0},
    {"AVX2 group without BMI1", 7, 0, kFma, 0, kAvx2Ebx & ~(1u << 3), 0, kExt, 0, 0, 0},
    {"AVX2 group without BMI2", 7, 0, kFma, 0, kAvx2Ebx & ~(1u << 8), 0, kExt, 0, 0, 0},
    {"coprocessor", 7, 0xB10, 0, 0, 0, 0, kExt, 0, 0, kFeatureCoprocessor},
    {"coprocessor, any stepping", 7, 0xF000B1F, 0, 0, 0, 0, kExt, 0, 0, kFeatureCoprocessor},
    {"family B model 2", 7, 0xB20, 0, 0, 0, 0, kExt, 0, 0, 0},
    {"family A model 1", 7, 0xA10, 0, 0, 0, 0, kExt, 0, 0, 0},
};

TEST(DecodeCpuFeatures, RegistersToFeatures) {
  for (const Row& r : kRows) {
    CpuIdSnapshot s;
    s.leaf0.eax = r.maxLeaf;
    s.leaf1 = {r.leaf1Eax, 0, r.leaf1Ecx, r.leaf1Edx};
    s.leaf7.ebx = r.leaf7Ebx;
    s.leaf7.ecx = r.leaf7Ecx;
    s.leaf80000000.eax = r.maxExtended;
    s.leaf80000001.ecx = r.ext1Ecx;
    s.xcr0 = r.xcr0;
    EXPECT_EQ(DecodeCpuFeatures(s), r.expected) << r.name;
  }
}

CpuIdRegisters Leaf0Vendor(const char (&vendor)[13]) {
  CpuIdRegisters r;
  std::memcpy(&r.ebx, vendor + 0, 4);
  std::memcpy(&r.edx, vendor + 4, 4);
  std::memcpy(&r.ecx, vendor + 8, 4);
  return r;
}

TEST(IsGenuineIntel, ComparesTheVendorInEbxEdxEcxOrder) {
  EXPECT_TRUE(IsGenuineIntel(Leaf0Vendor("GenuineIntel")));
  EXPECT_FALSE(IsGenuineIntel(Leaf0Vendor("GenuineIotel")));
  CpuIdRegisters swapped = Leaf0Vendor("GenuineIntel");
  std::swap(swapped.ecx, swapped.edx);
  EXPECT_FALSE(IsGenuineIntel(swapped));
}

TEST(DetectCpuFeatures, ReportsTheRunningProcessorsMask) {
  CpuFeatureMask mask = 0;
  ASSERT_EQ(DetectCpuFeatures(&mask), 1);
  EXPECT_EQ(mask, DecodeCpuFeatures(ReadCpuIdSnapshot()));
  // Every x86-64 processor has MMX, SSE and SSE2.
  EXPECT_EQ(mask & 0x7, 0x7u);
}

}  // namespace
}  // namespace vectorkernels
