// The 8 x 8 transpose of 16-bit lanes that the 2-byte de-interleave steps
// share, written once for either register type. `Lanes` names the register
// and its unpacks: SSE2's 128 bits, or AVX2's 256, whose unpacks work on each
// 128-bit half alone, so that it transposes two blocks at once.
#pragma once

namespace windowsmediafoundation {

// r[k] holds frame k's first eight samples; rows[c] gets channel c's
// samples of the eight frames.
template <typename Lanes>
void TransposeHalfWords(const typename Lanes::Vector (&r)[8], typename Lanes::Vector (&rows)[8]) {
  using Vector = typename Lanes::Vector;
  const Vector a0 = Lanes::Low16(r[0], r[1]), a1 = Lanes::Low16(r[2], r[3]);
  const Vector a2 = Lanes::Low16(r[4], r[5]), a3 = Lanes::Low16(r[6], r[7]);
  const Vector a4 = Lanes::High16(r[0], r[1]), a5 = Lanes::High16(r[2], r[3]);
  const Vector a6 = Lanes::High16(r[4], r[5]), a7 = Lanes::High16(r[6], r[7]);
  const Vector b0 = Lanes::Low32(a0, a1), b1 = Lanes::Low32(a2, a3);
  const Vector b2 = Lanes::High32(a0, a1), b3 = Lanes::High32(a2, a3);
  const Vector b4 = Lanes::Low32(a4, a5), b5 = Lanes::Low32(a6, a7);
  const Vector b6 = Lanes::High32(a4, a5), b7 = Lanes::High32(a6, a7);
  rows[0] = Lanes::Low64(b0, b1);
  rows[1] = Lanes::High64(b0, b1);
  rows[2] = Lanes::Low64(b2, b3);
  rows[3] = Lanes::High64(b2, b3);
  rows[4] = Lanes::Low64(b4, b5);
  rows[5] = Lanes::High64(b4, b5);
  rows[6] = Lanes::Low64(b6, b7);
  rows[7] = Lanes::High64(b6, b7);
}

}  // namespace windowsmediafoundation
