// The tool's check command, run through its entry point on files FFmpeg made
// and on damaged copies of them.
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "Commands.h"
#include "MediaFixtures.h"
#include "Watchdog.h"
#include "support/TempDir.h"
#include "support/ToolReporting.h"

namespace aurivox_tool {
namespace {

std::string Utf8(const orxcore::WString& path) { return orxcore::UTF16toStdString(path); }

std::string Fixture(const std::string& name) { return Utf8(aurivox_test::MediaFixtureWPath(name)); }

// The exit status, then the lines printed.
std::vector<std::string> Check(const Arguments& args) {
  lastError.clear();
  ::testing::internal::CaptureStdout();
  std::vector<std::string> lines = {std::to_string(RunCheck(args))};
  std::istringstream out(::testing::internal::GetCapturedStdout());
  for (std::string line; std::getline(out, line);) lines.push_back(line);
  return lines;
}

// The value after `"key":` in a one-line JSON object, up to the next comma
// or brace.
std::string JsonValue(const std::string& object, const std::string& key) {
  const std::string marker = "\"" + key + "\":";
  const std::size_t at = object.find(marker);
  if (at == std::string::npos) return "<missing>";
  const std::size_t begin = at + marker.size();
  return object.substr(begin, object.find_first_of(",}", begin) - begin);
}

// A byte rate of 1 in the header of the third file makes two seconds of
// audio claim to last for days: past the real end the decoder pads with
// zeros, and the check stops long before the claimed length.
TEST(CheckCommand, FilesAreReadToTheirLengthOrUntilOnlyPaddingComesBack) {
  auto wave = aurivox_test::ReadMediaFixture("pcm_s16.wav");
  const std::size_t format = std::string(wave.begin(), wave.begin() + 64).find("fmt ");
  ASSERT_NE(format, std::string::npos);
  const std::uint32_t byteRate = 1;
  std::memcpy(&wave[format + 16], &byteRate, sizeof byteRate);
  aurivox_test::TempDir dir;
  const std::string claimsMore = Utf8(aurivox_test::ToWString(dir.WriteFile("claims-more.wav", wave)));

  const auto lines = Check({"--json", Fixture("pcm_s24.wav"), Fixture("stereo.m4a"), claimsMore});
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_EQ(lines[0], "0");
  EXPECT_EQ(lines[1], "{\"files\": [");
  for (const std::string& line : {lines[2], lines[3], lines[4]}) {
    EXPECT_EQ(JsonValue(line, "outcome"), "\"decoded\"") << line;
    EXPECT_GE(std::stoll(JsonValue(line, "framesRead")), 88200) << line;  // two seconds
  }
  EXPECT_EQ(JsonValue(lines[2], "channels"), "2");
  for (const std::string& line : {lines[2], lines[3]}) {
    EXPECT_EQ(JsonValue(line, "framesRead"), JsonValue(line, "durationFrames")) << line;
    EXPECT_EQ(JsonValue(line, "stoppedOnZeros"), "false") << line;
  }
  EXPECT_EQ(JsonValue(lines[4], "stoppedOnZeros"), "true") << lines[4];
  EXPECT_GE(std::stoll(JsonValue(lines[4], "framesRead")), 4194304 + 88200);
  EXPECT_LT(std::stoll(JsonValue(lines[4], "framesRead")), std::stoll(JsonValue(lines[4], "durationFrames")));
  EXPECT_EQ(lines[5].substr(0, 14), "], \"summary\": ");
  EXPECT_EQ(JsonValue(lines[5], "decoded"), "3");
}

TEST(CheckCommand, EachFileGetsALineAndTheRunASummary) {
  aurivox_test::TempDir dir;
  const std::string empty = Utf8(aurivox_test::ToWString(dir.WriteFile("empty.wav", "")));
  const auto lines = Check({"--timeout-free", empty, Utf8(dir.WPath("missing.m4a")), Fixture("pcm_u8.wav"),
                            Fixture("video_only.mp4"), "--", "-not-a-file.wav"});
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[0], "0");
  EXPECT_EQ(lines[1].rfind(empty + ": refused at open: open 2 (", 0), 0u) << lines[1];
  EXPECT_NE(lines[1].find("; the file is empty;"), std::string::npos) << lines[1];
  EXPECT_NE(lines[2].find(": refused at open: open 2 ("), std::string::npos) << lines[2];
  EXPECT_NE(lines[3].find(": decoded: open 0 (success); 88200 of 88200 frames read; read 0 (success)"),
            std::string::npos)
      << lines[3];
  EXPECT_NE(lines[4].find(": decoded: open 0 (success); no audio to read;"), std::string::npos) << lines[4];
  EXPECT_EQ(lines[5].rfind("-not-a-file.wav: refused at open: open 2", 0), 0u) << lines[5];
  EXPECT_EQ(lines[6], "5 files: 2 decoded, 3 refused at open (2: 3), 0 failed while reading");
}

TEST(CheckCommand, UsageErrors) {
  EXPECT_EQ(Check({})[0], std::to_string(kExitUsage));
  EXPECT_EQ(lastError, "check: missing PATH");
  EXPECT_EQ(Check({"--json", "--fast", "a.wav"})[0], std::to_string(kExitUsage));
  EXPECT_EQ(lastError, "check: unknown option '--fast'");
  const auto help = Check({"a.wav", "--help"});
  EXPECT_EQ(help[0], "0");
  EXPECT_EQ(help[1], "Usage: aurivox check [--json] [--timeout-free] [--pause-after-open] PATH...");
}

TEST(CheckWatchdog, WorkThatFinishesInTimeLeavesTheProcessAlone) {
  int reports = 0;
  {
    Watchdog watchdog(std::chrono::milliseconds(2000), [&] { ++reports; }, 3);
    for (int i = 0; i < 50; ++i) {
      watchdog.Arm();
      watchdog.Disarm();
    }
  }
  EXPECT_EQ(reports, 0);
}

TEST(CheckWatchdogDeathTest, WorkPastTheBoundIsReportedAndEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        Watchdog watchdog(std::chrono::milliseconds(50), [] { std::fputs("still running\n", stderr); }, 3);
        watchdog.Arm();
        for (;;) std::this_thread::sleep_for(std::chrono::seconds(1));
      },
      ::testing::ExitedWithCode(3), "still running");
}

}  // namespace
}  // namespace aurivox_tool
