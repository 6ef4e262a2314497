// The tool's check command, run through its entry point on files FFmpeg made
// and on damaged copies of them.
#include <gtest/gtest.h>

#include <cstring>

#include "Commands.h"
#include "support/ToolReporting.h"
#include "MediaFixtures.h"
#include "Watchdog.h"
#include "support/TempDir.h"

namespace aurivox_tool {

namespace {

using aurivox_test::ReadMediaFixture;

struct Outcome {
  int status;
  std::string out;
};

Outcome Check(const Arguments& args) {
  lastError.clear();
  ::testing::internal::CaptureStdout();
  const int status = RunCheck(args);
  return {status, ::testing::internal::GetCapturedStdout()};
}

std::string Utf8(const orxcore::WString& path) { return orxcore::UTF16toStdString(path); }

std::string Fixture(const std::string& name) { return Utf8(aurivox_test::MediaFixtureWPath(name)); }

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
    lines.push_back(text.substr(begin, end - begin));
  }
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

TEST(CheckCommand, UndamagedFilesAreReadToTheirReportedLength) {
  const Outcome run = Check({"--json", Fixture("pcm_s24.wav"), Fixture("stereo.m4a")});
  EXPECT_EQ(run.status, kExitOk);
  const auto lines = Lines(run.out);
  ASSERT_EQ(lines.size(), 4u) << run.out;
  EXPECT_EQ(lines[0], "{\"files\": [");
  for (const std::string& line : {lines[1], lines[2]}) {
    EXPECT_EQ(JsonValue(line, "outcome"), "\"decoded\"") << line;
    EXPECT_EQ(JsonValue(line, "framesRead"), JsonValue(line, "durationFrames")) << line;
    EXPECT_GT(std::stoll(JsonValue(line, "framesRead")), 80000) << line;  // two seconds
    EXPECT_EQ(JsonValue(line, "stoppedOnZeros"), "false") << line;
  }
  EXPECT_EQ(JsonValue(lines[1], "channels"), "2");
  EXPECT_EQ(lines[3].substr(0, 14), "], \"summary\": ");
  EXPECT_EQ(JsonValue(lines[3], "decoded"), "2");
}

TEST(CheckCommand, EmptyAndMissingFilesAreRefusedAtOpen) {
  aurivox_test::TempDir dir;
  dir.WriteFile("empty.wav", std::vector<std::uint8_t>{});
  const Outcome run = Check({Utf8(dir.WPath("empty.wav")), Utf8(dir.WPath("missing.m4a")), Fixture("pcm_u8.wav")});
  EXPECT_EQ(run.status, kExitOk);
  const auto lines = Lines(run.out);
  ASSERT_EQ(lines.size(), 4u) << run.out;
  EXPECT_EQ(lines[0].rfind(Utf8(dir.WPath("empty.wav")) + ": refused at open: open 2 (", 0), 0u) << lines[0];
  EXPECT_NE(lines[1].find(": refused at open: open 2 ("), std::string::npos) << lines[1];
  EXPECT_NE(lines[2].find(": decoded: open 0 (success); 88200 of 88200 frames read; read 0 (success)"),
            std::string::npos)
      << lines[2];
  EXPECT_EQ(lines[3], "3 files: 1 decoded, 2 refused at open (2: 2), 0 failed while reading");
}

TEST(CheckCommand, AFileWithoutAudioOpensWithNothingToRead) {
  const Outcome run = Check({Fixture("video_only.mp4")});
  EXPECT_EQ(run.status, kExitOk);
  EXPECT_NE(run.out.find(": decoded: open 0 (success); no audio to read;"), std::string::npos) << run.out;
}

// A byte rate of 1 in the header makes two seconds of audio claim to last
// for days: past the real end the decoder pads with zeros, and the check
// stops long before the claimed length.
TEST(CheckCommand, ReadsStopOnceOnlyPaddingComesBack) {
  auto wave = ReadMediaFixture("pcm_s16.wav");
  ASSERT_GT(wave.size(), 1000u);
  const std::size_t format = std::string(wave.begin(), wave.begin() + 64).find("fmt ");
  ASSERT_NE(format, std::string::npos);
  const std::uint32_t byteRate = 1;
  std::memcpy(&wave[format + 16], &byteRate, sizeof byteRate);
  aurivox_test::TempDir dir;
  dir.WriteFile("claims-more.wav", wave);

  const Outcome run = Check({"--json", Utf8(dir.WPath("claims-more.wav"))});
  EXPECT_EQ(run.status, kExitOk);
  const auto lines = Lines(run.out);
  ASSERT_EQ(lines.size(), 3u) << run.out;
  EXPECT_EQ(JsonValue(lines[1], "outcome"), "\"decoded\"") << lines[1];
  EXPECT_EQ(JsonValue(lines[1], "stoppedOnZeros"), "true") << lines[1];
  const long long read = std::stoll(JsonValue(lines[1], "framesRead"));
  EXPECT_GE(read, 4194304 + 88200);
  EXPECT_LT(read, std::stoll(JsonValue(lines[1], "durationFrames")));
}

TEST(CheckCommand, UsageErrors) {
  EXPECT_EQ(Check({}).status, kExitUsage);
  EXPECT_EQ(lastError, "check: missing PATH");
  EXPECT_EQ(Check({"--json", "--fast", "a.wav"}).status, kExitUsage);
  EXPECT_EQ(lastError, "check: unknown option '--fast'");
  const Outcome help = Check({"a.wav", "--help"});
  EXPECT_EQ(help.status, kExitOk);
  EXPECT_EQ(help.out.rfind("Usage: aurivox check", 0), 0u);
}

TEST(CheckCommand, PathsAfterTheEndOfOptionsMayStartWithADash) {
  const Outcome run = Check({"--timeout-free", "--", "-not-a-file.wav"});
  EXPECT_EQ(run.status, kExitOk);
  EXPECT_EQ(run.out.rfind("-not-a-file.wav: refused at open: open 2", 0), 0u) << run.out;
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
