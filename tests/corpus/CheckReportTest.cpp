// How the check command classifies, words and counts what happened to files.
#include "CheckReport.h"

#include <gtest/gtest.h>

#include "Json.h"

namespace aurivox_tool {
namespace {

FileCheck Decoded(std::int64_t frames) {
  FileCheck check;
  check.path = "a.wav";
  check.channels = 2;
  check.durationFrames = frames;
  check.framesRead = frames;
  check.readAttempted = true;
  check.seconds = 0.25;
  return check;
}

FileCheck Refused(int code) {
  FileCheck check;
  check.path = "b.m4a";
  check.openResult = code;
  return check;
}

FileCheck FailedRead(int code) {
  FileCheck check = Decoded(88200);
  check.framesRead = 4096;
  check.readResult = code;
  return check;
}

TEST(CheckResults, OutcomeFollowsTheFirstFailingStep) {
  EXPECT_EQ(Decoded(10).Outcome(), CheckOutcome::kDecoded);
  EXPECT_EQ(Refused(2).Outcome(), CheckOutcome::kRefusedAtOpen);
  EXPECT_EQ(FailedRead(33).Outcome(), CheckOutcome::kFailedWhileReading);
  FileCheck hung = Decoded(10);
  hung.hung = true;
  EXPECT_EQ(hung.Outcome(), CheckOutcome::kHung);
  // A file without audio is opened and has nothing to read.
  FileCheck silent;
  EXPECT_EQ(silent.Outcome(), CheckOutcome::kDecoded);
}

TEST(CheckResults, OnlyReadsThatHappenedCountTowardsTheDocumentedCodes) {
  FileCheck notRead = Refused(2);
  notRead.readResult = 77;  // left over, never returned by a read
  EXPECT_TRUE(notRead.ResultsDocumented());
  EXPECT_FALSE(FailedRead(77).ResultsDocumented());
  EXPECT_FALSE(Refused(4).ResultsDocumented());
}

TEST(CheckLine, TextOfADecodedFile) {
  EXPECT_EQ(CheckLineText(Decoded(88200)),
            "a.wav: decoded: open 0 (success); 88200 of 88200 frames read; read 0 (success); 0.25 s");
}

TEST(CheckLine, TextOfAFailedReadAndOfAnUndocumentedCode) {
  EXPECT_EQ(CheckLineText(FailedRead(33)),
            "a.wav: failed while reading: open 0 (success); 4096 of 88200 frames read; read 33 (reading the audio "
            "failed); 0.25 s");
  const std::string line = CheckLineText(FailedRead(34));
  EXPECT_NE(line.find("read 34 (unknown result)"), std::string::npos) << line;
  EXPECT_NE(line.find("OUTSIDE THE DOCUMENTED CODES"), std::string::npos) << line;
}

TEST(CheckLine, TextOfAFileWithoutAudioAndOfOneCutShortByZeros) {
  FileCheck silent;
  silent.path = "video.mp4";
  EXPECT_EQ(CheckLineText(silent), "video.mp4: decoded: open 0 (success); no audio to read; 0.00 s");
  FileCheck padded = Decoded(1 << 30);
  padded.framesRead = 4194304 + 100;
  padded.stoppedOnZeros = true;
  EXPECT_EQ(CheckLineText(padded),
            "a.wav: decoded: open 0 (success); 4194404 of 1073741824 frames read, stopped after a long run of "
            "zeros; read 0 (success); 0.25 s");
}

TEST(CheckLine, JsonOfEachOutcome) {
  EXPECT_EQ(CheckLineJson(Decoded(10)),
            R"({"path":"a.wav","outcome":"decoded","open":{"code":0,"meaning":"success"},"channels":2,)"
            R"("durationFrames":10,"framesRead":10,"read":{"code":0,"meaning":"success"},"stoppedOnZeros":false,)"
            R"("documented":true,"seconds":0.25})");
  FileCheck refused = Refused(99);
  refused.inputProblem = "the file is empty";
  const std::string refusedJson = CheckLineJson(refused);
  EXPECT_NE(refusedJson.find(R"("outcome":"refused at open","open":{"code":99)"), std::string::npos) << refusedJson;
  EXPECT_NE(refusedJson.find(R"("problem":"the file is empty")"), std::string::npos) << refusedJson;
  EXPECT_NE(refusedJson.find(R"("read":null)"), std::string::npos) << refusedJson;
  FileCheck hung = Refused(0);
  hung.hung = true;
  const std::string hungJson = CheckLineJson(hung);
  EXPECT_EQ(hungJson.find(R"("open")"), std::string::npos) << hungJson;
  EXPECT_NE(hungJson.find(R"("outcome":"hung")"), std::string::npos) << hungJson;
}

// Names may hold quotes, backslashes, control characters and any bytes; the
// line stays one valid JSON object either way.
TEST(CheckLine, JsonKeepsOddPathsReadable) {
  FileCheck check = Refused(2);
  for (const std::string path : {"Z:\\media\\\"quoted\".wav", "tab\there\x01\n.wav", "caf\xC3\xA9 \xE6\x97\xA5.m4a"}) {
    check.path = path;
    const std::string line = CheckLineJson(check);
    EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    EXPECT_EQ(Json::parse(line)["path"], path) << line;
  }
  check.path = "bad\xFF" "byte.wav";
  EXPECT_EQ(Json::parse(CheckLineJson(check))["path"], "bad\xEF\xBF\xBD" "byte.wav");
}

TEST(CheckSummaryText, CountsOutcomesAndRefusalsByCode) {
  CheckSummary summary;
  summary.Add(Decoded(10));
  summary.Add(Decoded(20));
  summary.Add(Refused(2));
  summary.Add(Refused(99));
  summary.Add(Refused(2));
  summary.Add(FailedRead(33));
  EXPECT_EQ(summary.files(), 6);
  EXPECT_EQ(summary.Text(),
            "6 files: 2 decoded, 3 refused at open (2: 2, 99: 1), 1 failed while reading (33: 1)");
  EXPECT_EQ(summary.Json(),
            R"({"files":6,"decoded":2,"refusedAtOpen":3,"refusedByCode":{"2":2,"99":1},)"
            R"("failedWhileReading":1,"failedByCode":{"33":1},"hung":0,"outsideDocumentedCodes":0})");
}

TEST(CheckSummaryText, NamesHangsAndUndocumentedCodes) {
  CheckSummary summary;
  summary.Add(Refused(7));
  FileCheck hung = Decoded(10);
  hung.hung = true;
  summary.Add(hung);
  EXPECT_EQ(summary.hung(), 1);
  EXPECT_EQ(summary.undocumented(), 1);
  EXPECT_EQ(summary.Text(),
            "2 files: 0 decoded, 1 refused at open (7: 1), 0 failed while reading, 1 hung; 1 ended with a code "
            "outside 0, 2, 3, 5, 9, 33, 99");
}

TEST(ZeroRunTest, StopsOnlyAfterTheLimitInARow) {
  ZeroRun run(10000);
  EXPECT_FALSE(run.Add(4096, true));
  EXPECT_FALSE(run.Add(4096, true));
  EXPECT_FALSE(run.Add(4096, false));  // audio again: the run starts over
  EXPECT_FALSE(run.Add(4096, true));
  EXPECT_FALSE(run.Add(4096, true));
  EXPECT_TRUE(run.Add(4096, true));
}

TEST(BlockFramesTest, ShrinksForManyChannelsButNeverToZero) {
  EXPECT_EQ(BlockFrames(2, 4096, 16u << 20), 4096u);
  EXPECT_EQ(BlockFrames(0, 4096, 16u << 20), 4096u);
  EXPECT_EQ(BlockFrames(65535, 4096, 16u << 20), 256u);
  EXPECT_EQ(BlockFrames(65535, 4096, 1000), 1u);
}

}  // namespace
}  // namespace aurivox_tool
