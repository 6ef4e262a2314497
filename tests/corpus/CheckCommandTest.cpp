// The tool's check command, run through its entry point on files FFmpeg made
// and on damaged copies of them.
#include <gtest/gtest.h>

#include <cstring>
#include <regex>

#include "Commands.h"
#include "Json.h"
#include "MediaFixtures.h"
#include "Watchdog.h"
#include "support/TempDir.h"
#include "support/ToolReporting.h"

namespace aurivox_tool {
namespace {

std::string Utf8(const orxcore::WString& path) { return orxcore::UTF16toStdString(path); }

std::string Fixture(const std::string& name) { return Utf8(aurivox_test::MediaFixtureWPath(name)); }

// A byte rate of 1 in the header of the second file makes two seconds of
// audio claim to last for days: past the real end the decoder pads with
// zeros, and the check stops long before the claimed length.
TEST(CheckCommand, FilesAreReadToTheirLengthOrUntilOnlyPaddingComesBack) {
  auto wave = aurivox_test::ReadMediaFixture("pcm_s16.wav");
  const std::size_t format = std::string(wave.begin(), wave.begin() + 64).find("fmt ");
  const std::uint32_t byteRate = 1;
  std::memcpy(&wave[format + 16], &byteRate, sizeof byteRate);
  aurivox_test::TempDir dir;
  const std::string claimsMore = Utf8(aurivox_test::ToWString(dir.WriteFile("claims-more.wav", wave)));

  const auto [status, out] = RunCaptured(RunCheck, {"--json", Fixture("pcm_s24.wav"), claimsMore});
  EXPECT_EQ(status, kExitOk);
  const Json run = Json::parse(out);
  const Json& whole = run["files"][0];
  const Json& padded = run["files"][1];
  EXPECT_EQ(whole["framesRead"], 88200) << whole;
  EXPECT_EQ(whole["stoppedOnZeros"], false) << whole;
  EXPECT_EQ(padded["stoppedOnZeros"], true) << padded;
  EXPECT_GE(padded["framesRead"], 4194304 + 88200) << padded;
  EXPECT_EQ(run["summary"]["decoded"], 2) << run;
  EXPECT_EQ(RunCaptured(RunCheck, {}).first, kExitUsage) << "no path";
  EXPECT_EQ(RunCaptured(RunCheck, {"--json", "--fast", "a.wav"}).first, kExitUsage) << "an unknown option";
  EXPECT_EQ(RunCaptured(RunCheck, {"a.wav", "--help"}).first, kExitOk) << "help, wherever it stands";

  // Text, without a time bound, and paths after "--" that start with a dash;
  // the seconds each file took left out.
  const auto text = RunCaptured(RunCheck, {"--timeout-free", Fixture("video_only.mp4"), "--", "-x.wav"}).second;
  EXPECT_EQ(std::regex_replace(text, std::regex("; [0-9.]+ s\n"), "\n"),
            Fixture("video_only.mp4") + ": decoded: open 0 (success); no audio to read\n" +
                "-x.wav: refused at open: open 2 (the media reader could not open the file or set up its audio); "
                "no such file\n2 files: 1 decoded, 1 refused at open (2: 1), 0 failed while reading\n");
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
