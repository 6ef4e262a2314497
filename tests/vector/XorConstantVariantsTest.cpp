// Every variant, called directly, against a byte-wise reference. A variant the
// running processor cannot execute is reported as skipped, not passed.
#include "XorConstantVariants.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "DispatchLevel.h"
#include "XorConstant.h"

namespace vectorkernels {
namespace {

constexpr std::size_t kGuardBytes = 64;
constexpr std::size_t kLine = 32;

// Bytes from a 64-byte boundary on, filled with a pattern that differs per seed.
struct Area {
  Area(std::size_t bytes, std::uint32_t seed) : storage(bytes + 64), size(bytes) {
    begin = storage.data() + (64 - reinterpret_cast<std::uintptr_t>(storage.data()) % 64) % 64;
    std::uint32_t x = seed * 2654435761u + 1;
    for (std::size_t i = 0; i < size; ++i) {
      x ^= x << 13;
      x ^= x >> 17;
      x ^= x << 5;
      begin[i] = static_cast<unsigned char>(x);
    }
  }

  // Deliberately possibly misaligned: the kernels accept any byte address.
  std::uint32_t* At(std::size_t offset) { return reinterpret_cast<std::uint32_t*>(begin + offset); }
  bool operator==(const Area& other) const { return std::memcmp(begin, other.begin, size) == 0; }

  std::vector<unsigned char> storage;
  std::size_t size;
  unsigned char* begin;
};

class XorVariantTest : public ::testing::TestWithParam<std::int32_t> {
 protected:
  void SetUp() override {
    const CpuFeatureMask detected = DecodeCpuFeatures(ReadCpuIdSnapshot());
    if (!CanRunVariant(GetParam(), detected)) GTEST_SKIP() << "this processor cannot run it";
  }

  // Runs the variant on `length` elements `offset` bytes past a guard and
  // compares every byte, the guards on both sides included, with the reference.
  bool MatchesReference(std::uint32_t value, std::size_t offset, std::int32_t length) {
    const std::size_t size = 2 * kGuardBytes + kLine + 4 * static_cast<std::size_t>(length);
    const std::uint32_t seed = value ^ static_cast<std::uint32_t>(offset * 7919 + length);
    Area actual(size, seed), expected(size, seed);
    unsigned char* p = expected.begin + kGuardBytes + offset;
    for (std::int32_t i = 0; i < 4 * length; ++i) p[i] ^= static_cast<unsigned char>(value >> (8 * (i % 4)));
    const VectorStatus status = XorConstantVariant(GetParam())(value, actual.At(kGuardBytes + offset), length);
    return status == StatusOk && actual == expected;
  }
};

TEST_P(XorVariantTest, EveryByteOffsetInALineAndEveryTailLength) {
  std::vector<std::int32_t> lengths = {255, 256, 257, 1023, 1920, 4100};
  for (std::int32_t length = 1; length <= 200; ++length) lengths.push_back(length);
  for (std::uint32_t value : {0xFF000000u, 0x9E3779B9u, 0xFFFFFFFFu, 0x00000001u}) {
    for (std::size_t offset = 0; offset < kLine; ++offset) {
      for (std::int32_t length : lengths) {
        ASSERT_TRUE(MatchesReference(value, offset, length))
            << "value 0x" << std::hex << value << std::dec << ", offset " << offset << ", length " << length;
      }
    }
  }
}

TEST_P(XorVariantTest, BadArgumentsAreReportedAndNothingIsTouched) {
  Area actual(kLine, 1);
  const Area untouched(kLine, 1);
  const std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  // The null buffer is reported before the length and the constant.
  const struct {
    std::uint32_t value;
    bool null;
    std::int32_t length;
    VectorStatus status;
  } kCases[] = {{0xFF000000, true, 16, StatusNullPointer}, {0, true, 16, StatusNullPointer},
                {0xFF000000, true, -1, StatusNullPointer}, {0xFF000000, false, 0, StatusBadLength},
                {0, false, 0, StatusBadLength},           {0xFF000000, false, kMin, StatusBadLength}};
  for (const auto& c : kCases) {
    std::uint32_t* buffer = c.null ? nullptr : actual.At(1);
    EXPECT_EQ(XorConstantVariant(GetParam())(c.value, buffer, c.length), c.status) << c.length;
  }
  EXPECT_TRUE(actual == untouched);
}

INSTANTIATE_TEST_SUITE_P(AllLevels, XorVariantTest, ::testing::Range(0, kHighestDispatchLevel + 1),
                         [](const auto& info) { return "Level" + std::to_string(info.param); });

}  // namespace
}  // namespace vectorkernels
