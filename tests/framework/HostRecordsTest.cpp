// The host records, packed as the host lays them out.
#include <gtest/gtest.h>

#include <cstring>

#include "aurivox/HostRecords.h"

namespace {

TEST(HostRecords, FieldsWriteTheDocumentedBytesAndNoOthers) {
  imFileInfoRec8 info;
  std::memset(&info, 0xAB, sizeof info);
  info.hasAudio = 1;
  info.numChannels = 6;
  info.sampleRate = 48000.0f;
  info.sampleType = 12;
  info.audioDuration = 0x0102030405060708;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&info);
  const std::pair<int, std::uint8_t> kBytes[] = {{0, 0xAB},   {1, 1},    {2, 0xAB},   {173, 0xAB}, {174, 6},   {177, 0},
                                                 {181, 0x47}, {182, 12}, {186, 0x08}, {193, 0x01}, {194, 0xAB}};
  for (const auto& [offset, value] : kBytes) EXPECT_EQ(bytes[offset], value) << offset;
}

}  // namespace
