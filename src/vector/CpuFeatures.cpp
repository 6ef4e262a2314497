#include "CpuFeatures.h"

#include <cstring>

namespace vectorkernels {
namespace {

constexpr std::uint32_t kLeaf7 = 7;
constexpr std::uint32_t kLeafExtendedFeatures = 0x80000001;

constexpr bool Bit(std::uint32_t reg, int bit) { return ((reg >> bit) & 1u) != 0; }

struct RegisterBit {
  std::uint32_t CpuIdRegisters::*reg;
  int bit;
  CpuFeatureMask feature;
};

constexpr RegisterBit kLeaf1Bits[] = {
    {&CpuIdRegisters::edx, 23, kFeatureMmx},
    {&CpuIdRegisters::edx, 25, kFeatureSse},
    {&CpuIdRegisters::edx, 26, kFeatureSse2},
    {&CpuIdRegisters::ecx, 0, kFeatureSse3},
    {&CpuIdRegisters::ecx, 9, kFeatureSsse3},
    {&CpuIdRegisters::ecx, 22, kFeatureMovbe},
    {&CpuIdRegisters::ecx, 19, kFeatureSse41},
    {&CpuIdRegisters::ecx, 20, kFeatureSse42},
    {&CpuIdRegisters::ecx, 28, kFeatureAvx},
    {&CpuIdRegisters::ecx, 25, kFeatureAes},
    {&CpuIdRegisters::ecx, 1, kFeaturePclmulqdq},
    {&CpuIdRegisters::ecx, 30, kFeatureRdrand},
    {&CpuIdRegisters::ecx, 29, kFeatureF16c},
};

constexpr RegisterBit kLeaf7Bits[] = {
    {&CpuIdRegisters::ebx, 19, kFeatureAdx},
    {&CpuIdRegisters::ebx, 18, kFeatureRdseed},
    {&CpuIdRegisters::ebx, 29, kFeatureSha},
    {&CpuIdRegisters::ebx, 16, kFeatureAvx512F},
    {&CpuIdRegisters::ebx, 28, kFeatureAvx512Cd},
    {&CpuIdRegisters::ebx, 27, kFeatureAvx512Er},
    {&CpuIdRegisters::ebx, 26, kFeatureAvx512Pf},
    {&CpuIdRegisters::ebx, 30, kFeatureAvx512Bw},
    {&CpuIdRegisters::ebx, 17, kFeatureAvx512Dq},
    {&CpuIdRegisters::ebx, 31, kFeatureAvx512Vl},
    {&CpuIdRegisters::ecx, 1, kFeatureAvx512Vbmi},
    {&CpuIdRegisters::ebx, 14, kFeatureMpx},
    {&CpuIdRegisters::edx, 3, kFeatureAvx5124Fmaps},
    {&CpuIdRegisters::edx, 2, kFeatureAvx5124Vnniw},
    {&CpuIdRegisters::ebx, 21, kFeatureAvx512Ifma},
    {&CpuIdRegisters::ecx, 14, kFeatureLeaf7Ecx14},
    {&CpuIdRegisters::ecx, 12, kFeatureLeaf7Ecx12},
};

template <std::size_t N>
CpuFeatureMask CollectBits(const CpuIdRegisters& regs, const RegisterBit (&bits)[N]) {
  CpuFeatureMask mask = 0;
  for (const RegisterBit& b : bits) {
    if (Bit(regs.*b.reg, b.bit)) mask |= b.feature;
  }
  return mask;
}

}  // namespace

CpuIdSnapshot ReadCpuIdSnapshot() {
  CpuIdSnapshot s;
  s.leaf0 = CpuId(0);
  s.leaf80000000 = CpuId(0x80000000);
  s.leaf1 = CpuId(1);
  if (s.leaf0.eax >= kLeaf7) s.leaf7 = CpuId(kLeaf7, 0);
  if (s.leaf80000000.eax >= kLeafExtendedFeatures) s.leaf80000001 = CpuId(kLeafExtendedFeatures);
  // XGETBV is an invalid instruction unless the OS turned on XSAVE.
  if (Bit(s.leaf1.ecx, 27)) s.xcr0 = ReadXcr0();
  return s;
}

CpuFeatureMask DecodeCpuFeatures(const CpuIdSnapshot& s) {
  const CpuIdRegisters& l1 = s.leaf1;
  const bool osxsave = Bit(l1.ecx, 27);

  CpuFeatureMask mask = CollectBits(l1, kLeaf1Bits);
  if (osxsave && Bit(l1.ecx, 28) && (s.xcr0 & 0x6) == 0x6) mask |= kFeatureAvxState;

  if (s.leaf0.eax >= kLeaf7) {
    const CpuIdRegisters& l7 = s.leaf7;
    mask |= CollectBits(l7, kLeaf7Bits);
    if (Bit(l1.ecx, 12) && Bit(l7.ebx, 5) && Bit(l7.ebx, 3) && Bit(l7.ebx, 8)) {
      mask |= kFeatureAvx2Group;
    }
  }
  if (s.leaf80000000.eax >= kLeafExtendedFeatures && Bit(s.leaf80000001.ecx, 8)) {
    mask |= kFeaturePrefetchw;
  }
  if ((l1.eax & 0xFF0) == 0xB10) mask |= kFeatureCoprocessor;
  // Opmask and upper ZMM state; the XMM/YMM bits are not part of this test.
  if (osxsave && (s.xcr0 & 0xE0) == 0xE0) mask |= kFeatureAvx512State;
  return mask;
}

bool IsGenuineIntel(const CpuIdRegisters& leaf0) {
  char vendor[12];
  std::memcpy(vendor + 0, &leaf0.ebx, 4);
  std::memcpy(vendor + 4, &leaf0.edx, 4);
  std::memcpy(vendor + 8, &leaf0.ecx, 4);
  return std::memcmp(vendor, "GenuineIntel", sizeof vendor) == 0;
}

}  // namespace vectorkernels
