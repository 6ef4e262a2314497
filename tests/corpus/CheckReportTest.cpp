// How the check command classifies, words and counts what happened to files.
#include "CheckReport.h"

#include <gtest/gtest.h>

namespace aurivox_tool {
namespace {

// A file of `frames` frames, read whole, or for 4096 frames when the last
// read gave `readResult`.
FileCheck Opened(std::int64_t frames, int readResult = 0) {
  FileCheck check;
  check.path = "a.wav";
  check.channels = 2;
  check.durationFrames = frames;
  check.framesRead = readResult == 0 ? frames : 4096;
  check.readAttempted = true;
  check.readResult = readResult;
  check.seconds = 0.25;
  return check;
}

FileCheck Refused(int code) {
  FileCheck check;
  check.path = "b.m4a";
  check.openResult = code;
  check.readResult = 77;  // left over, never returned by a read
  return check;
}

TEST(CheckReport, EachOutcomeIsWordedAndCountedAsTextAndJson) {
  FileCheck silent;  // a file without audio is opened and has nothing to read
  silent.path = "video.mp4";
  FileCheck padded = Opened(1 << 30);
  padded.framesRead = 4194304 + 100;
  padded.stoppedOnZeros = true;
  FileCheck empty = Refused(2);
  empty.inputProblem = "the file is empty";
  FileCheck hung = Opened(88200, 77);
  hung.hung = true;
  const std::pair<FileCheck, std::string> kCases[] = {
      {Opened(88200), "a.wav: decoded: open 0 (success); 88200 of 88200 frames read; read 0 (success); 0.25 s"},
      {Opened(88200, 33),
       "a.wav: failed while reading: open 0 (success); 4096 of 88200 frames read; read 33 (reading the audio "
       "failed); 0.25 s"},
      {Opened(88200, 34),
       "a.wav: failed while reading: open 0 (success); 4096 of 88200 frames read; read 34 (unknown result); "
       "0.25 s; RESULT OUTSIDE THE DOCUMENTED CODES"},
      {silent, "video.mp4: decoded: open 0 (success); no audio to read; 0.00 s"},
      {padded,
       "a.wav: decoded: open 0 (success); 4194404 of 1073741824 frames read, stopped after a long run of "
       "zeros; read 0 (success); 0.25 s"},
      {empty, "b.m4a: refused at open: open 2 (the media reader could not open the file or set up its audio); "
              "the file is empty; 0.00 s"},
      {Refused(4), "b.m4a: refused at open: open 4 (unknown result); 0.00 s; RESULT OUTSIDE THE DOCUMENTED CODES"},
      {hung, "a.wav: hung: still running after 0.25 s, 4096 frames read"},
  };
  CheckSummary summary;
  for (const auto& [check, text] : kCases) {
    EXPECT_EQ(CheckLineText(check), text);
    summary.Add(check);
  }
  // A hang is counted as a hang, whatever its codes.
  EXPECT_EQ(summary.Text(),
            "8 files: 3 decoded, 2 refused at open (2: 1, 4: 1), 2 failed while reading (33: 1, 34: 1), 1 hung; "
            "2 ended with a code outside 0, 2, 3, 5, 9, 33, 99");
  EXPECT_EQ(summary.Json(),
            R"({"files":8,"decoded":3,"refusedAtOpen":2,"refusedByCode":{"2":1,"4":1},)"
            R"("failedWhileReading":2,"failedByCode":{"33":1,"34":1},"hung":1,"outsideDocumentedCodes":2})");
  CheckSummary one;
  one.Add(Refused(4));
  EXPECT_EQ(one.Text(), "1 file: 0 decoded, 1 refused at open (4: 1), 0 failed while reading; 1 ended with a code "
                        "outside 0, 2, 3, 5, 9, 33, 99");

  // As JSON, a problem found before the open is named and a read that never
  // happened is null; a hang has no open result.
  EXPECT_EQ(CheckLineJson(Opened(10)),
            R"({"path":"a.wav","outcome":"decoded","open":{"code":0,"meaning":"success"},"channels":2,)"
            R"("durationFrames":10,"framesRead":10,"read":{"code":0,"meaning":"success"},"stoppedOnZeros":false,)"
            R"("documented":true,"seconds":0.25})");
  empty.openResult = 99;
  const std::string refusedJson = CheckLineJson(empty);
  EXPECT_NE(refusedJson.find(R"x("open":{"code":99,"meaning":"the file could not be opened (bad path or )x"
                             R"x(unsupported file)"},"problem":"the file is empty","channels":0,)x"
                             R"x("durationFrames":0,"framesRead":0,"read":null,)x"),
            std::string::npos)
      << refusedJson;
  EXPECT_EQ(CheckLineJson(hung).find(R"("open")"), std::string::npos) << CheckLineJson(hung);
}

TEST(CheckReport, ZeroRunsAndBlockSizes) {
  // Sound in between starts the count again from nothing.
  ZeroRun run(2 * 4096);
  for (bool allZero : {true, false, true}) EXPECT_FALSE(run.Add(4096, allZero));
  EXPECT_FALSE(run.Add(4095, true));
  EXPECT_TRUE(run.Add(1, true)) << "the limit reached in a row";
  EXPECT_EQ(BlockFrames(2, 4096, 16u << 20), 4096u);
  EXPECT_EQ(BlockFrames(0, 4096, 16u << 20), 4096u);
  EXPECT_EQ(BlockFrames(65535, 4096, 16u << 20), 256u);
  EXPECT_EQ(BlockFrames(65535, 4096, 1000), 1u) << "never zero";
}

}  // namespace
}  // namespace aurivox_tool
