// From the registers CPUID and XGETBV report to the features detected, and
// from requested and detected features to the dispatch level.
#include "DispatchLevel.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vectorkernels {
namespace {

constexpr std::uint32_t kOsxsave = 1u << 27, kAvx = 1u << 28, kFma = 1u << 12;
constexpr std::uint32_t kAvx2Ebx = (1u << 5) | (1u << 3) | (1u << 8);  // AVX2, BMI1, BMI2
constexpr std::uint32_t kExt = 0x80000008;

// One processor a row: the registers detection reads and the features they mean.
struct Registers {
  const char* name;
  std::uint32_t maxLeaf, leaf1Eax, leaf1Ecx, leaf1Edx, leaf7Ebx, leaf7Ecx, maxExtended, ext1Ecx;
  std::uint64_t xcr0;
  CpuFeatureMask expected;
};

const Registers kProcessors[] = {
    {"bits of leaves 1 and 7", 7, 0, 1u << 22, 1u << 26, 1u << 16, 0x1002, kExt, 0, 0,
     kFeatureMovbe | kFeatureSse2 | kFeatureAvx512F | kFeatureAvx512Vbmi | kFeatureLeaf7Ecx12},
    {"leaf 7 beyond the highest leaf", 6, 0, kFma, 0, ~0u, ~0u, kExt, 0, 0, 0},
    {"PREFETCHW", 7, 0, 0, 0, 0, 0, 0x80000001, 1u << 8, 0, kFeaturePrefetchw},
    {"PREFETCHW without its leaf", 7, 0, 0, 0, 0, 0, 0x80000000, 1u << 8, 0, 0},
    {"AVX state", 7, 0, kOsxsave | kAvx, 0, 0, 0, kExt, 0, 0x6, kFeatureAvx | kFeatureAvxState},
    {"YMM state not saved", 7, 0, kOsxsave | kAvx, 0, 0, 0, kExt, 0, 0x2, kFeatureAvx},
    {"XCR0 without OSXSAVE", 7, 0, kAvx, 0, 0, 0, kExt, 0, 0xE6, kFeatureAvx},
    {"state without AVX", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0x6, 0},
    {"ZMM state", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0xE0, kFeatureAvx512State},
    {"ZMM state without opmask", 7, 0, kOsxsave, 0, 0, 0, kExt, 0, 0xC6, 0},
    {"AVX2 group", 7, 0, kFma, 0, kAvx2Ebx, 0, kExt, 0, 0, kFeatureAvx2Group},
    {"AVX2 group without FMA", 7, 0, 0, 0, kAvx2Ebx, 0, kExt, 0, 0, 0},
    {"AVX2 group without BMI2", 7, 0, kFma, 0, kAvx2Ebx & ~(1u << 8), 0, kExt, 0, 0, 0},
    {"coprocessor, any stepping", 7, 0xF000B1F, 0, 0, 0, 0, kExt, 0, 0, kFeatureCoprocessor},
};

TEST(DecodeCpuFeatures, RegistersToFeatures) {
  for (const Registers& r : kProcessors) {
    const CpuIdSnapshot s{{r.maxLeaf}, {r.leaf1Eax, 0, r.leaf1Ecx, r.leaf1Edx}, {0, r.leaf7Ebx, r.leaf7Ecx, 0},
                          {r.maxExtended}, {0, 0, r.ext1Ecx}, r.xcr0};
    EXPECT_EQ(DecodeCpuFeatures(s), r.expected) << r.name;
  }
}

// Every known feature, the register states included.
constexpr CpuFeatureMask kAll = 0xFFFFFFFFF;
constexpr CpuFeatureMask kUnknownBit = CpuFeatureMask{1} << 40;
constexpr CpuFeatureMask kNoAvxState = kAll & ~kFeatureAvxState;
constexpr CpuFeatureMask kNoZmmState = kAll & ~kFeatureAvx512State;
constexpr CpuFeatureMask kNotZmmUsers = kFeatureMpx | kFeatureAvx512Ifma | kFeatureCoprocessor;

// Where a wrong mask would pick another level or leave a group incomplete:
// the rest of a group is added with status 51, a warning replaces that note.
const std::tuple<const char*, CpuFeatureMask, CpuFeatureMask, std::int32_t, CpuFeatureMask, VectorStatus> kChoices[] = {
    {"AVX-512 selecting bits", 0x7300000, kAll, 5, 0x73081DF, StatusIncompleteFeatureSet},
    {"AVX-512 without VL", 0x33081DF, kAll, 4, 0x33081DF, StatusOk},
    {"AVX2 selecting bit", 0x8000, kAll, 4, 0x81DF, StatusIncompleteFeatureSet},
    {"AVX alone", 0x100, kAll, 3, 0x1DF, StatusIncompleteFeatureSet},
    {"SSE4.1 does not add MOVBE", 0x40, kAll, 1, 0x5F, StatusIncompleteFeatureSet},
    {"MOVBE adds SSSE3", 0x20, kAll, 1, 0x3F, StatusIncompleteFeatureSet},
    {"SSE2", 0x7, kAll, 0, 0x7, StatusOk},
    {"nothing", 0, kAll, 0, kFeatureMmx, StatusNoSse2},
    {"AVX2 without AVX state", 0x81DF, kNoAvxState, 2, 0xDF, StatusFeatureUnavailable},
    {"AVX only, no AVX state", 0x100, kNoAvxState, 0, kFeatureMmx, StatusFeatureUnavailable},
    {"not ZMM state users", 0x73081DF | kNotZmmUsers, kNoZmmState, 4, 0x81DF | kNotZmmUsers, StatusFeatureUnavailable},
    {"warning replaces 51", 0x8000, kAll & ~kFeatureAvx2Group, 4, 0x81DF, StatusFeatureUnavailable},
    {"unknown bit", 0x2 | kUnknownBit, kAll | kUnknownBit, 0, 0x3 | kUnknownBit, StatusUnknownFeature},
    // A detected mask never has such bits, so the missing-feature walk wins.
    {"unknown bit, real processor", 0x7 | kUnknownBit, kAll, 0, 0x7 | kUnknownBit, StatusFeatureUnavailable},
    {"bit 62", 0x7 | (kUnknownBit << 22), ~kUncheckedRequest, 0, 0x7 | (kUnknownBit << 22), StatusUnknownFeature},
    {"unchecked AVX-512 bits", kUncheckedRequest | 0x7300000, 0, 5, 0x73081DF, StatusIncompleteFeatureSet},
    {"unchecked unknown bits", kUncheckedRequest | kUnknownBit | 0x7, 0, 0, kUnknownBit | 0x7, StatusOk},
};

TEST(ChooseDispatchLevel, LevelFeaturesAndStatus) {
  for (const auto& [name, requested, detected, level, enabled, status] : kChoices) {
    const DispatchChoice choice = ChooseDispatchLevel(requested, detected);
    EXPECT_EQ(choice.level, level) << name;
    EXPECT_EQ(choice.enabledFeatures, enabled) << name << std::hex << " got 0x" << choice.enabledFeatures;
    EXPECT_EQ(choice.status, status) << name;
  }
}

}  // namespace
}  // namespace vectorkernels
