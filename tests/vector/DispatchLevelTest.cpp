#include "DispatchLevel.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace vectorkernels {
namespace {

// Every known feature, the register states included.
constexpr CpuFeatureMask kEverything = 0xFFFFFFFFF;
constexpr CpuFeatureMask kUnknownBit = CpuFeatureMask{1} << 40;

struct Case {
  const char* name;
  CpuFeatureMask requested;
  CpuFeatureMask detected;
  std::int32_t level;
  CpuFeatureMask enabled;
  VectorStatus status;
};

template <typename Cases>
void ExpectChoices(const Cases& cases) {
  for (const Case& c : cases) {
    const DispatchChoice choice = ChooseDispatchLevel(c.requested, c.detected);
    EXPECT_EQ(choice.level, c.level) << c.name;
    EXPECT_EQ(choice.enabledFeatures, c.enabled)
        << c.name << std::hex << " got 0x" << choice.enabledFeatures;
    EXPECT_EQ(choice.status, c.status) << c.name;
  }
}

void ExpectChoices(std::initializer_list<Case> cases) { ExpectChoices<>(cases); }

// Rows of the level table where a wrong mask would pick another level or
// leave the group incomplete: the rest of a group is added with status 51.
const Case kLevelRows[] = {
    {"AVX-512 server, complete", 0x73081DF, kEverything, 5, 0x73081DF, StatusOk},
    {"AVX-512 server, selecting bits", 0x7300000, kEverything, 5, 0x73081DF,
     StatusIncompleteFeatureSet},
    {"AVX2 group, selecting bit", 0x8000, kEverything, 4, 0x81DF, StatusIncompleteFeatureSet},
    {"MOVBE, selecting bit", 0x20, kEverything, 1, 0x3F, StatusIncompleteFeatureSet},
    {"SSE2, complete", 0x7, kEverything, 0, 0x7, StatusOk},
};

TEST(ChooseDispatchLevel, EachRowOfTheLevelTable) { ExpectChoices(kLevelRows); }

TEST(ChooseDispatchLevel, FirstMatchingRowWins) {
  ExpectChoices({
      {"server and coprocessor AVX-512", 0x7F081DF, kEverything, 5, 0x7F081DF, StatusOk},
      {"AVX-512 without VL falls to AVX2", 0x33081DF, kEverything, 4, 0x33081DF, StatusOk},
      {"AVX-512 F and CD alone select nothing wide", 0x3000DF, kEverything, 2, 0x3000DF, StatusOk},
      {"AVX2 group without AVX", 0x80DF, kEverything, 4, 0x81DF, StatusIncompleteFeatureSet},
  });
}

TEST(ChooseDispatchLevel, Sse41RowDoesNotAddMovbeButMovbeRowAddsSsse3) {
  ExpectChoices({
      {"SSE4.1 with MOVBE keeps MOVBE", 0x7F, kEverything, 1, 0x7F, StatusOk},
      {"SSE4.1 alone", 0x40, kEverything, 1, 0x5F, StatusIncompleteFeatureSet},
      {"SSE4.1 and MOVBE, nothing else", 0x60, kEverything, 1, 0x7F, StatusIncompleteFeatureSet},
      {"MOVBE alone", 0x20, kEverything, 1, 0x3F, StatusIncompleteFeatureSet},
  });
  EXPECT_EQ(ChooseDispatchLevel(0x40, kEverything).enabledFeatures & kFeatureMovbe, 0u);
}

TEST(ChooseDispatchLevel, WithoutSse2LevelZeroAndStatus36) {
  ExpectChoices({
      {"nothing", 0, kEverything, 0, kFeatureMmx, StatusNoSse2},
      {"MMX", 0x1, kEverything, 0, kFeatureMmx, StatusNoSse2},
      {"SSE adds MMX", 0x2, kEverything, 0, 0x3, StatusNoSse2},
      {"AES only", kFeatureAes, kEverything, 0, kFeatureAes | kFeatureMmx, StatusNoSse2},
  });
}

TEST(ChooseDispatchLevel, AvxWithoutOsStateDropsToSse) {
  constexpr CpuFeatureMask kNoAvxState = kEverything & ~kFeatureAvxState;
  ExpectChoices({
      {"AVX2 request", 0x81DF, kNoAvxState, 2, 0xDF, StatusFeatureUnavailable},
      {"AVX request", 0x1DF, kNoAvxState, 2, 0xDF, StatusFeatureUnavailable},
      {"AVX without SSE4.2", 0x15F, kNoAvxState, 1, 0x5F, StatusFeatureUnavailable},
      {"AVX only", 0x100, kNoAvxState, 0, kFeatureMmx, StatusFeatureUnavailable},
  });
}

TEST(ChooseDispatchLevel, Avx512WithoutOsStateDropsItsBitsOnly) {
  constexpr CpuFeatureMask kNoZmmState = kEverything & ~kFeatureAvx512State;
  constexpr CpuFeatureMask kKept = kFeatureMpx | kFeatureAvx512Ifma | kFeatureCoprocessor;
  ExpectChoices({
      {"server AVX-512", 0x73081DF, kNoZmmState, 4, 0x81DF, StatusFeatureUnavailable},
      {"MPX, IFMA and the marker are not AVX-512 state users", 0x73081DF | kKept, kNoZmmState, 4,
       0x81DF | kKept, StatusFeatureUnavailable},
      {"leaf 7 ECX bits 12 and 14 are", 0x81DF | kFeatureLeaf7Ecx12 | kFeatureLeaf7Ecx14,
       kNoZmmState, 4, 0x81DF, StatusFeatureUnavailable},
  });
}

TEST(ChooseDispatchLevel, MissingFeatureWarnsButKeepsTheRequest) {
  constexpr CpuFeatureMask kNoAvx2 = kEverything & ~kFeatureAvx2Group;
  ExpectChoices({
      {"AVX2 group absent but asked for", 0x81DF, kNoAvx2, 4, 0x81DF, StatusFeatureUnavailable},
      {"SSE4.2 absent", 0xDF, kEverything & ~kFeatureSse42, 2, 0xDF, StatusFeatureUnavailable},
      {"warning replaces 51", 0x8000, kNoAvx2, 4, 0x81DF, StatusFeatureUnavailable},
      {"warning replaces 36", kFeatureSha, 0x7, 0, kFeatureSha | kFeatureMmx,
       StatusFeatureUnavailable},
  });
}

TEST(ChooseDispatchLevel, UnknownBitsGiveStatus50OnlyWhenTheProcessorHasThem) {
  ExpectChoices({
      {"unknown bit the processor reports", 0x81DF | kUnknownBit, kEverything | kUnknownBit, 4,
       0x81DF | kUnknownBit, StatusUnknownFeature},
      {"unknown bit without SSE2", 0x2 | kUnknownBit, kEverything | kUnknownBit, 0,
       0x3 | kUnknownBit, StatusUnknownFeature},
      // A detected mask never has such bits, so the missing-feature walk wins.
      {"unknown bit, real processor", 0x81DF | kUnknownBit, kEverything, 4, 0x81DF | kUnknownBit,
       StatusFeatureUnavailable},
      {"bit 62", 0x7 | (CpuFeatureMask{1} << 62), kEverything | (CpuFeatureMask{1} << 62), 0,
       0x7 | (CpuFeatureMask{1} << 62), StatusUnknownFeature},
  });
}

TEST(ChooseDispatchLevel, UncheckedRequestSkipsEveryCheckAndDropsBit63) {
  ExpectChoices({
      {"AVX2 on nothing", kUncheckedRequest | 0x81DF, 0, 4, 0x81DF, StatusOk},
      {"AVX-512 on nothing", kUncheckedRequest | 0x7300000, 0, 5, 0x73081DF,
       StatusIncompleteFeatureSet},
      {"unknown bits", kUncheckedRequest | kUnknownBit | 0x7, 0, 0, kUnknownBit | 0x7, StatusOk},
      {"nothing", kUncheckedRequest, kEverything, 0, kFeatureMmx, StatusNoSse2},
  });
}

}  // namespace
}  // namespace vectorkernels
