// A segment another Windows program holds without sharing it.
#include <gtest/gtest.h>
#include <windows.h>

#include "MediaFixtures.h"
#include "PlaylistBuilder.h"
#include "aurivox/Decoder.h"
#include "orxcore/WideChar.h"

namespace {

TEST(DecoderSpannedFailures, ASegmentLockedByAnotherProgramFailsTheOpen) {
  aurivox_test::RecordingTree tree;
  tree.WriteSplitRecording(aurivox_test::ReadMediaFixture("pcm_s16.wav"), {1000, 2000});
  HANDLE handle = CreateFileW(orxcore::AsWide(tree.Path("STREAM/00013.MTS")), GENERIC_READ | GENERIC_WRITE, 0,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(handle, INVALID_HANDLE_VALUE);
  Aurivox::Decoder decoder;
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultOpenFailed);
  CloseHandle(handle);
  decoder.Quiet();
  EXPECT_EQ(decoder.Open(tree.Path("STREAM/00012.MTS"), nullptr), Aurivox::kResultSuccess);
}

}  // namespace
