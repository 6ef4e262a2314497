// A segment another Windows program holds without sharing it.
#include <gtest/gtest.h>
#include <windows.h>

#include "DecoderSpannedTest.h"
#include "MediaFixtures.h"
#include "aurivox/Decoder.h"
#include "orxcore/WideChar.h"

namespace {

using aurivox_test::ReadMediaFixture;
using aurivox_test::RecordingTree;

TEST(DecoderSpannedFailures, ASegmentLockedByAnotherProgramFailsTheOpen) {
  const auto source = ReadMediaFixture("pcm_s16.wav");
  RecordingTree tree;
  aurivox_test::WriteSplitRecording(tree, source, {1000, 2000});
  // Another program holds the last segment without sharing it.
  const orxcore::WString locked = tree.Path("STREAM/00013.MTS");
  HANDLE handle = CreateFileW(orxcore::AsWide(locked), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
  CloseHandle(handle);
  decoder.Quiet();
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultSuccess);
}

}  // namespace
