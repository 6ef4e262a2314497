// The tool's segments command, run through its entry point.
#include <gtest/gtest.h>

#include "Commands.h"
#include "Json.h"
#include "PlaylistBuilder.h"
#include "support/ToolReporting.h"

namespace aurivox_tool {
namespace {

using aurivox_test::kNewShot;
using aurivox_test::kSameShot;

std::string Utf8(const orxcore::WString& path) { return orxcore::UTF16toStdString(path); }

TEST(SegmentsCommand, ListsTheShotOfASegmentAsLinesOrJson) {
  aurivox_test::RecordingTree tree;
  tree.WritePlaylist("00001.MPL", {{"00001", kNewShot}, {"00002", kSameShot}, {"00003", kNewShot}});
  for (const char* name : {"00001.MTS", "00002.MTS", "00003.MTS"}) tree.WriteStream(name);
  const std::string first = Utf8(tree.Path("STREAM/00001.MTS")), second = Utf8(tree.Path("STREAM/00002.MTS"));
  EXPECT_EQ(RunCaptured(RunSegments, {second}), std::make_pair(kExitOk, first + "\n" + second + "\n"));

  const std::string third = Utf8(tree.Path("STREAM/00003.MTS"));
  EXPECT_EQ(Json::parse(RunCaptured(RunSegments, {"--json", third}).second), Json::array({third}));

  const std::string plain = Utf8(aurivox_test::ToWString(tree.dir().WriteFile("plain.mts", "x")));
  EXPECT_EQ(RunCaptured(RunSegments, {plain, "--json"}), std::make_pair(kExitOk, std::string("[]\n")));
  EXPECT_EQ(RunCaptured(RunSegments, {Utf8(tree.Path("STREAM/00009.MTS"))}).first, kExitFailure);
  EXPECT_NE(lastError.find("no such file"), std::string::npos) << lastError;
}

}  // namespace
}  // namespace aurivox_tool
