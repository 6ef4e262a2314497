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

// A byte rate of 1 in the header of the second file makes two seconds of
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

  const auto lines = Check({"--json", Fixture("pcm_s24.wav"), claimsMore});
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[0], "0");
  EXPECT_EQ(JsonValue(lines[2], "framesRead"), "88200") << lines[2];
  EXPECT_EQ(JsonValue(lines[2], "stoppedOnZeros"), "false") << lines[2];
  EXPECT_EQ(JsonValue(lines[3], "outcome"), "\"decoded\"") << lines[3];
  EXPECT_EQ(JsonValue(lines[3], "stoppedOnZeros"), "true") << lines[3];
  EXPECT_GE(std::stoll(JsonValue(lines[3], "framesRead")), 4194304 + 88200);
  EXPECT_LT(std::stoll(JsonValue(lines[3], "framesRead")), std::stoll(JsonValue(lines[3], "durationFrames")));
  EXPECT_EQ(JsonValue(lines[4], "decoded"), "2") << lines[4];

  // Text, without a time bound, and paths after "--" that start with a dash.
  const auto text = Check({"--timeout-free", Fixture("video_only.mp4"), "--", "-not-a-file.wav"});
  ASSERT_EQ(text.size(), 4u);
  EXPECT_NE(text[1].find(": decoded: open 0 (success); no audio to read;"), std::string::npos) << text[1];
  EXPECT_EQ(text[2].rfind("-not-a-file.wav: refused at open: open 2", 0), 0u) << text[2];
  EXPECT_EQ(text[3], "2 files: 1 decoded, 1 refused at open (2: 1), 0 failed while reading");
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
