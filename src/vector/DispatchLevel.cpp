#include "DispatchLevel.h"

namespace vectorkernels {
namespace {

constexpr CpuFeatureMask kAvxFeatures = kFeatureAvx | kFeatureAvx2Group;
// AVX-512 F to VBMI, 4FMAPS, 4VNNIW and leaf 7 ECX bits 12 and 14.
constexpr CpuFeatureMask kAvx512Features = 0xC6FF00000;
constexpr CpuFeatureMask kAvx512Common = kFeatureAvx512F | kFeatureAvx512Cd;

struct LevelRow {
  CpuFeatureMask condition;  // all of these bits select the row
  std::int32_t level;
  CpuFeatureMask required;
};

// First match wins. The SSE4.1 row does not add MOVBE, which many SSE4.1
// processors lack; the MOVBE row, reached only when MOVBE is named, adds SSSE3.
constexpr LevelRow kLevelRows[] = {
    {kAvx512Common | kFeatureAvx512Bw | kFeatureAvx512Dq | kFeatureAvx512Vl, 5, 0x73081DF},
    {kAvx512Common | kFeatureAvx512Er | kFeatureAvx512Pf, 4, 0xF081DF},
    {kFeatureAvx2Group, 4, 0x81DF},
    {kFeatureAvx, 3, 0x1DF},
    {kFeatureSse42, 2, 0xDF},
    {kFeatureSse41, 1, 0x5F},
    {kFeatureMovbe, 1, 0x3F},
    {kFeatureSsse3, 1, 0x1F},
    {kFeatureSse3, 0, 0xF},
    {kFeatureSse2, 0, 0x7},
};

}  // namespace

DispatchChoice ChooseDispatchLevel(CpuFeatureMask requested, CpuFeatureMask detected) {
  CpuFeatureMask m = requested;
  VectorStatus status = StatusOk;
  if ((m & kUncheckedRequest) != 0) {
    m &= ~kUncheckedRequest;
  } else {
    if ((m & kUnknownFeatures) != 0) status = StatusUnknownFeature;
    // Without OS support for the wider register state the instructions fault,
    // so those requests are dropped before a level is chosen.
    if ((m & kAvxFeatures) != 0 && (detected & kFeatureAvxState) == 0) {
      m &= ~kAvxFeatures;
      status = StatusFeatureUnavailable;
    }
    if ((m & kAvx512Features) != 0 && (detected & kFeatureAvx512State) == 0) {
      m &= ~kAvx512Features;
      status = StatusFeatureUnavailable;
    }
    // Any other missing feature only warns; the request stays as it is.
    if ((m & ~detected) != 0) status = StatusFeatureUnavailable;
  }

  DispatchChoice choice;
  for (const LevelRow& row : kLevelRows) {
    if ((m & row.condition) != row.condition) continue;
    choice.level = row.level;
    choice.enabledFeatures = m | row.required;
    // A warning from the checks outranks the note that features were added.
    if (status == StatusOk && (row.required & ~m) != 0) status = StatusIncompleteFeatureSet;
    choice.status = status;
    return choice;
  }
  // Nothing named SSE2: level 0 all the same, since every x86-64 has it.
  choice.level = 0;
  choice.enabledFeatures = m | ((m & kFeatureSse) != 0 ? kFeatureMmx | kFeatureSse : kFeatureMmx);
  choice.status = status != StatusOk ? status : StatusNoSse2;
  return choice;
}

}  // namespace vectorkernels
