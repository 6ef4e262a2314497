// What the check command found for each file and for the run: how a file
// ended, its line of text or JSON, and the summary of all files.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace aurivox_tool {

// True for the result codes the module documents: 0, 2, 3, 5, 9, 33, 99.
bool IsDocumentedResult(int result);

enum class CheckOutcome {
  kDecoded,            // opened, and every read succeeded
  kRefusedAtOpen,      // the open returned a failure code
  kFailedWhileReading, // opened, then a read returned a failure code
  kHung,               // still running when the per-file bound ran out
};

const char* OutcomeText(CheckOutcome outcome);

struct FileCheck {
  std::string path;
  int openResult = 0;
  // What the tool found wrong with the file before opening it (missing, a
  // folder, unreadable, empty); empty when nothing.
  std::string inputProblem;
  bool hung = false;
  std::uint32_t channels = 0;
  std::int64_t durationFrames = 0;  // as the decoder reported it
  std::int64_t framesRead = 0;
  bool readAttempted = false;
  int readResult = 0;  // of the last read; meaningful when readAttempted
  // Reads stopped before the reported duration because they had delivered
  // nothing but zeros for a long stretch: the stream ended well before the
  // length its header claims.
  bool stoppedOnZeros = false;
  double seconds = 0;

  CheckOutcome Outcome() const;
  // True when every result code of the file is a documented one.
  bool ResultsDocumented() const;
};

// "PATH: decoded: open 0 (success); 88200 of 88200 frames read; read 0
// (success); 0.12 s", without a line break.
std::string CheckLineText(const FileCheck& check);
// The same as one JSON object on one line.
std::string CheckLineJson(const FileCheck& check);

class CheckSummary {
 public:
  void Add(const FileCheck& check);

  int files() const { return files_; }
  int decoded() const { return decoded_; }
  int refusedAtOpen() const { return refusedAtOpen_; }
  int failedWhileReading() const { return failedWhileReading_; }
  int hung() const { return hung_; }
  int undocumented() const { return undocumented_; }
  const std::map<int, int>& refusedByCode() const { return refusedByCode_; }

  // "N files: A decoded, B refused at open (2: 5, 99: 1), C failed while
  // reading", and the files that hung or ended outside the documented codes
  // when there are any.
  std::string Text() const;
  std::string Json() const;

 private:
  int files_ = 0;
  int decoded_ = 0;
  int refusedAtOpen_ = 0;
  int failedWhileReading_ = 0;
  int hung_ = 0;
  int undocumented_ = 0;
  std::map<int, int> refusedByCode_;
  std::map<int, int> failedByCode_;
};

// Tells when reads have delivered nothing but zeros for so long that the
// stream must have ended: past its end the decoder pads every read with
// zeros and still succeeds, and a damaged header can claim hours.
class ZeroRun {
 public:
  explicit ZeroRun(std::int64_t limitFrames) : limitFrames_(limitFrames) {}
  // Adds one read of `frames`; true once the zeros in a row reach the limit.
  bool Add(std::int64_t frames, bool allZero);

 private:
  std::int64_t limitFrames_;
  std::int64_t frames_ = 0;
};

// Frames asked for in one read: `preferred`, made smaller for files with so
// many channels that the per-channel buffers would pass `maxSamples` in all.
std::uint32_t BlockFrames(std::uint32_t channels, std::uint32_t preferred, std::uint64_t maxSamples);

}  // namespace aurivox_tool
