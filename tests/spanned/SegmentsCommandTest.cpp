// The tool's segments command, run through its entry point.
#include <gtest/gtest.h>

#include "Commands.h"
#include "support/ToolReporting.h"
#include "PlaylistBuilder.h"

namespace aurivox_tool {

namespace {

using aurivox_test::kNewShot;
using aurivox_test::kSameShot;
using aurivox_test::PlaylistBuilder;
using aurivox_test::RecordingTree;

struct Outcome {
  int status;
  std::string out;
};

Outcome Segments(const Arguments& args) {
  lastError.clear();
  ::testing::internal::CaptureStdout();
  const int status = RunSegments(args);
  return {status, ::testing::internal::GetCapturedStdout()};
}

std::string Utf8(const orxcore::WString& path) { return orxcore::UTF16toStdString(path); }

class SegmentsCommand : public ::testing::Test {
 protected:
  SegmentsCommand() {
    tree_.WritePlaylist("00001.MPL", PlaylistBuilder()
                                         .Item("00001", kNewShot)
                                         .Item("00002", kSameShot)
                                         .Item("00003", kNewShot));
    for (const char* name : {"00001.MTS", "00002.MTS", "00003.MTS"}) tree_.WriteStream(name);
  }
  RecordingTree tree_;
};

TEST_F(SegmentsCommand, ListsTheShotOfASegmentOnePerLine) {
  const Outcome run = Segments({Utf8(tree_.Path("STREAM/00002.MTS"))});
  EXPECT_EQ(run.status, kExitOk);
  EXPECT_EQ(run.out, Utf8(tree_.Path("STREAM/00001.MTS")) + "\n" + Utf8(tree_.Path("STREAM/00002.MTS")) + "\n");
}

TEST_F(SegmentsCommand, JsonArray) {
  const Outcome run = Segments({"--json", Utf8(tree_.Path("STREAM/00003.MTS"))});
  EXPECT_EQ(run.status, kExitOk);
  std::string escaped;
  for (char c : Utf8(tree_.Path("STREAM/00003.MTS"))) escaped += c == '\\' ? std::string("\\\\") : std::string(1, c);
  EXPECT_EQ(run.out, "[\"" + escaped + "\"]\n");
}

TEST_F(SegmentsCommand, FileOutsideARecordingPrintsNothing) {
  tree_.dir().WriteFile("plain.mts", "x");
  Outcome run = Segments({Utf8(tree_.dir().WPath("plain.mts"))});
  EXPECT_EQ(run.status, kExitOk);
  EXPECT_EQ(run.out, "");
  run = Segments({Utf8(tree_.dir().WPath("plain.mts")), "--json"});
  EXPECT_EQ(run.out, "[]\n");
}

TEST_F(SegmentsCommand, MissingFileFails) {
  const Outcome run = Segments({Utf8(tree_.Path("STREAM/00009.MTS"))});
  EXPECT_EQ(run.status, kExitFailure);
  EXPECT_NE(lastError.find("no such file"), std::string::npos) << lastError;
}

}  // namespace
}  // namespace aurivox_tool
