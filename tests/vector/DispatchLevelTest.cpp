#include "DispatchLevel.h"

#include <gtest/gtest.h>

namespace vectorkernels {
namespace {

// Every known feature, the register states included.
constexpr CpuFeatureMask kAll = 0xFFFFFFFFF;
constexpr CpuFeatureMask kUnknownBit = CpuFeatureMask{1} << 40;
constexpr CpuFeatureMask kNoAvxState = kAll & ~kFeatureAvxState;
constexpr CpuFeatureMask kNoZmmState = kAll & ~kFeatureAvx512State;
constexpr CpuFeatureMask kNotZmmUsers = kFeatureMpx | kFeatureAvx512Ifma | kFeatureCoprocessor;

struct Case {
  const char* name;
  CpuFeatureMask requested;
  CpuFeatureMask detected;
  std::int32_t level;
  CpuFeatureMask enabled;
  VectorStatus status;
};

// Where a wrong mask would pick another level or leave a group incomplete:
// the rest of a group is added with status 51, a warning replaces that note.
const Case kCases[] = {
    {"AVX-512 server", 0x73081DF, kAll, 5, 0x73081DF, StatusOk},
    {"AVX-512 selecting bits", 0x7300000, kAll, 5, 0x73081DF, StatusIncompleteFeatureSet},
    {"server and coprocessor AVX-512", 0x7F081DF, kAll, 5, 0x7F081DF, StatusOk},
    {"coprocessor AVX-512 row", 0xF00000, kAll, 4, 0xF081DF, StatusIncompleteFeatureSet},
    {"AVX-512 without VL", 0x33081DF, kAll, 4, 0x33081DF, StatusOk},
    {"AVX-512 F and CD alone", 0x3000DF, kAll, 2, 0x3000DF, StatusOk},
    {"AVX2 selecting bit", 0x8000, kAll, 4, 0x81DF, StatusIncompleteFeatureSet},
    {"AVX alone", 0x100, kAll, 3, 0x1DF, StatusIncompleteFeatureSet},
    {"SSE4.1 with MOVBE keeps MOVBE", 0x7F, kAll, 1, 0x7F, StatusOk},
    {"SSE4.1 does not add MOVBE", 0x40, kAll, 1, 0x5F, StatusIncompleteFeatureSet},
    {"MOVBE adds SSSE3", 0x20, kAll, 1, 0x3F, StatusIncompleteFeatureSet},
    {"SSSE3", 0x10, kAll, 1, 0x1F, StatusIncompleteFeatureSet},
    {"SSE3", 0x8, kAll, 0, 0xF, StatusIncompleteFeatureSet},
    {"SSE2", 0x7, kAll, 0, 0x7, StatusOk},
    {"nothing", 0, kAll, 0, kFeatureMmx, StatusNoSse2},
    {"SSE adds MMX", 0x2, kAll, 0, 0x3, StatusNoSse2},
    {"AES only", kFeatureAes, kAll, 0, kFeatureAes | kFeatureMmx, StatusNoSse2},
    {"AVX2 without AVX state", 0x81DF, kNoAvxState, 2, 0xDF, StatusFeatureUnavailable},
    {"AVX without SSE4.2 or AVX state", 0x15F, kNoAvxState, 1, 0x5F, StatusFeatureUnavailable},
    {"AVX only, no AVX state", 0x100, kNoAvxState, 0, kFeatureMmx, StatusFeatureUnavailable},
    {"AVX-512 without ZMM state", 0x73081DF, kNoZmmState, 4, 0x81DF, StatusFeatureUnavailable},
    {"not ZMM state users", 0x73081DF | kNotZmmUsers, kNoZmmState, 4, 0x81DF | kNotZmmUsers,
     StatusFeatureUnavailable},
    {"leaf 7 ECX 12 and 14 need ZMM state", 0x81DF | kFeatureLeaf7Ecx12 | kFeatureLeaf7Ecx14,
     kNoZmmState, 4, 0x81DF, StatusFeatureUnavailable},
    {"missing feature kept", 0xDF, kAll & ~kFeatureSse42, 2, 0xDF, StatusFeatureUnavailable},
    {"warning replaces 51", 0x8000, kAll & ~kFeatureAvx2Group, 4, 0x81DF, StatusFeatureUnavailable},
    {"warning replaces 36", kFeatureSha, 0x7, 0, kFeatureSha | kFeatureMmx, StatusFeatureUnavailable},
    {"unknown bit reported", 0x81DF | kUnknownBit, kAll | kUnknownBit, 4, 0x81DF | kUnknownBit,
     StatusUnknownFeature},
    {"unknown bit without SSE2", 0x2 | kUnknownBit, kAll | kUnknownBit, 0, 0x3 | kUnknownBit,
     StatusUnknownFeature},
    // A detected mask never has such bits, so the missing-feature walk wins.
    {"unknown bit, real processor", 0x7 | kUnknownBit, kAll, 0, 0x7 | kUnknownBit,
     StatusFeatureUnavailable},
    {"bit 62", 0x7 | (CpuFeatureMask{1} << 62), ~kUncheckedRequest, 0,
     0x7 | (CpuFeatureMask{1} << 62), StatusUnknownFeature},
    {"unchecked AVX2 on nothing", kUncheckedRequest | 0x81DF, 0, 4, 0x81DF, StatusOk},
    {"unchecked AVX-512 bits on nothing", kUncheckedRequest | 0x7300000, 0, 5, 0x73081DF,
     StatusIncompleteFeatureSet},
    {"unchecked unknown bits", kUncheckedRequest | kUnknownBit | 0x7, 0, 0, kUnknownBit | 0x7,
     StatusOk},
    {"unchecked nothing", kUncheckedRequest, kAll, 0, kFeatureMmx, StatusNoSse2},
};

TEST(ChooseDispatchLevel, LevelFeaturesAndStatus) {
  for (const Case& c : kCases) {
    const DispatchChoice choice = ChooseDispatchLevel(c.requested, c.detected);
    EXPECT_EQ(choice.level, c.level) << c.name;
    EXPECT_EQ(choice.enabledFeatures, c.enabled) << c.name << std::hex << " got 0x" << choice.enabledFeatures;
    EXPECT_EQ(choice.status, c.status) << c.name;
  }
}

}  // namespace
}  // namespace vectorkernels
