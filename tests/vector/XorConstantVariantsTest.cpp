// Every variant the running processor supports, called directly, against a
// byte-wise reference. Variants this processor cannot run are listed by the
// last test of this file rather than skipped silently.
#include "XorConstantVariants.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <cstdio>
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
constexpr std::int32_t kMaxShortLength = 200;
constexpr std::int32_t kLongLengths[] = {255, 256, 257, 1023, 1920, 4100};
constexpr std::uint32_t kConstants[] = {0xFF000000, 0x9E3779B9, 0xFFFFFFFF, 0x00000001};

CpuFeatureMask ThisProcessor() { return DecodeCpuFeatures(ReadCpuIdSnapshot()); }

std::vector<std::int32_t> RunnableLevels() {
  std::vector<std::int32_t> levels;
  for (std::int32_t level = 0; level <= kHighestDispatchLevel; ++level) {
    if (CanRunVariant(level, ThisProcessor())) levels.push_back(level);
  }
  return levels;
}

// A 64-byte aligned area with guard bytes on both sides of every element range
// a test may touch; `At(offset)` is `offset` bytes past the front guard.
class GuardedBuffer {
 public:
  explicit GuardedBuffer(std::size_t payloadBytes)
      : storage_(2 * kGuardBytes + payloadBytes + 64), size_(2 * kGuardBytes + payloadBytes) {
    const auto address = reinterpret_cast<std::uintptr_t>(storage_.data());
    begin_ = storage_.data() + ((64 - address % 64) % 64);
  }

  // Fills the whole area, guards included, with a pattern that differs per call.
  void Fill(std::uint32_t seed) {
    std::uint32_t x = seed * 2654435761u + 1;
    for (std::size_t i = 0; i < size_; ++i) {
      x ^= x << 13;
      x ^= x >> 17;
      x ^= x << 5;
      begin_[i] = static_cast<unsigned char>(x);
    }
  }

  std::uint32_t* At(std::size_t offset) {
    // Deliberately possibly misaligned: the kernels accept any byte address.
    return reinterpret_cast<std::uint32_t*>(begin_ + kGuardBytes + offset);
  }
  const unsigned char* Bytes() const { return begin_; }
  unsigned char* Bytes() { return begin_; }
  std::size_t Size() const { return size_; }

 private:
  std::vector<unsigned char> storage_;
  std::size_t size_;
  unsigned char* begin_;
};

// XOR of little-endian 32-bit elements, byte by byte.
void ReferenceXor(unsigned char* p, std::uint32_t value, std::int32_t length) {
  for (std::int32_t i = 0; i < 4 * length; ++i) {
    p[i] ^= static_cast<unsigned char>(value >> (8 * (i % 4)));
  }
}

// Describes the first byte where `actual` and `expected` differ.
std::string FirstDifference(const GuardedBuffer& actual, const GuardedBuffer& expected,
                            std::size_t offset, std::int32_t length) {
  for (std::size_t i = 0; i < actual.Size(); ++i) {
    if (actual.Bytes()[i] == expected.Bytes()[i]) continue;
    const std::size_t first = kGuardBytes + offset;
    const std::size_t end = first + 4 * static_cast<std::size_t>(length);
    const std::string where = i < first  ? "front guard"
                              : i >= end ? "back guard"
                                         : "element " + std::to_string((i - first) / 4);
    return "byte " + std::to_string(i) + " (" + where + ")";
  }
  return "none";
}

class XorVariantTest : public ::testing::TestWithParam<std::int32_t> {
 protected:
  XorConstantFunction Variant() const { return XorConstantVariant(GetParam()); }

  // Runs the variant on `length` elements `offset` bytes into a line and
  // compares every byte, guards included, with the reference.
  void ExpectMatchesReference(std::uint32_t value, std::size_t offset, std::int32_t length) {
    const std::size_t payload = kLine + 4 * static_cast<std::size_t>(length);
    GuardedBuffer actual(payload);
    GuardedBuffer expected(payload);
    const std::uint32_t seed = value ^ static_cast<std::uint32_t>(offset * 7919 + length);
    actual.Fill(seed);
    expected.Fill(seed);
    ReferenceXor(expected.Bytes() + kGuardBytes + offset, value, length);

    ASSERT_EQ(Variant()(value, actual.At(offset), length), StatusOk);
    if (std::memcmp(actual.Bytes(), expected.Bytes(), actual.Size()) != 0) {
      ADD_FAILURE() << "value 0x" << std::hex << value << std::dec << ", offset " << offset
                    << ", length " << length << ": first difference at "
                    << FirstDifference(actual, expected, offset, length);
    }
  }
};

TEST_P(XorVariantTest, ShortLengthsAtEveryByteOffsetInALine) {
  for (std::uint32_t value : kConstants) {
    for (std::size_t offset = 0; offset < kLine; ++offset) {
      for (std::int32_t length = 1; length <= kMaxShortLength; ++length) {
        ExpectMatchesReference(value, offset, length);
        if (HasFailure()) return;
      }
    }
  }
}

TEST_P(XorVariantTest, LongRowsAtEveryByteOffsetInALine) {
  for (std::int32_t length : kLongLengths) {
    for (std::size_t offset = 0; offset < kLine; ++offset) {
      ExpectMatchesReference(0xFF000000, offset, length);
      if (HasFailure()) return;
    }
  }
}

TEST_P(XorVariantTest, MakesXrgbPixelsOpaqueAndOpaqueOnesTransparent) {
  std::vector<std::uint32_t> row = {0x00123456, 0xFF123456, 0x00000000, 0xFFFFFFFF, 0x7F00FF00};
  row.resize(37, 0x00ABCDEF);
  ASSERT_EQ(Variant()(0xFF000000, row.data(), static_cast<std::int32_t>(row.size())), StatusOk);
  EXPECT_EQ(row[0], 0xFF123456u);
  EXPECT_EQ(row[1], 0x00123456u) << "an exclusive or, not an or";
  EXPECT_EQ(row[2], 0xFF000000u);
  EXPECT_EQ(row[3], 0x00FFFFFFu);
  EXPECT_EQ(row[4], 0x8000FF00u);
  EXPECT_EQ(row[36], 0xFFABCDEFu);
}

TEST_P(XorVariantTest, NullBufferIsReportedBeforeTheLengthAndTheConstant) {
  EXPECT_EQ(Variant()(0xFF000000, nullptr, 16), StatusNullPointer);
  EXPECT_EQ(Variant()(0xFF000000, nullptr, 0), StatusNullPointer);
  EXPECT_EQ(Variant()(0xFF000000, nullptr, -1), StatusNullPointer);
  EXPECT_EQ(Variant()(0, nullptr, 16), StatusNullPointer);
}

TEST_P(XorVariantTest, LengthBelowOneIsReportedAndNothingIsTouched) {
  GuardedBuffer actual(kLine);
  actual.Fill(1);
  GuardedBuffer untouched(kLine);
  untouched.Fill(1);
  for (std::int32_t length : {0, -1, -8, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(Variant()(0xFF000000, actual.At(0), length), StatusBadLength) << length;
    EXPECT_EQ(Variant()(0, actual.At(1), length), StatusBadLength) << length;
  }
  EXPECT_EQ(std::memcmp(actual.Bytes(), untouched.Bytes(), actual.Size()), 0);
}

std::string LevelName(const ::testing::TestParamInfo<std::int32_t>& info) {
  std::string name = "Level" + std::to_string(info.param) + "_";
  for (const char* c = VariantName(info.param); *c != '\0'; ++c) {
    if (std::isalnum(static_cast<unsigned char>(*c))) name += *c;
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(RunnableOnThisProcessor, XorVariantTest,
                         ::testing::ValuesIn(RunnableLevels()), LevelName);

TEST(XorConstantVariants, ListsTheVariantsThisProcessorCannotRun) {
  const CpuFeatureMask detected = ThisProcessor();
  std::string notRun;
  for (std::int32_t level = 0; level <= kHighestDispatchLevel; ++level) {
    if (CanRunVariant(level, detected)) continue;
    notRun += " " + std::to_string(level) + "(" + VariantName(level) + ")";
  }
  std::printf("variants not tested on this processor:%s\n",
              notRun.empty() ? " none" : notRun.c_str());
  RecordProperty("variants_not_tested", notRun.empty() ? "none" : notRun);
  // Whatever this processor lacks, the level the dispatch would choose runs.
  const std::int32_t chosen = ChooseDispatchLevel(detected, detected).level;
  EXPECT_TRUE(CanRunVariant(chosen, detected)) << "level " << chosen;
  EXPECT_TRUE(CanRunVariant(0, detected));
}

}  // namespace
}  // namespace vectorkernels
