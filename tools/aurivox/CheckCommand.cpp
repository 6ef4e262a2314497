// aurivox check [--json] [--timeout-free] [--pause-after-open] PATH...: opens
// each file as a host would, reads all of it, and says how that ended.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "CheckReport.h"
#include "Commands.h"
#include "InputFile.h"
#include "Watchdog.h"
#include "aurivox/Decoder.h"

namespace aurivox_tool {
namespace {

constexpr char kName[] = "check";

constexpr char kHelp[] =
    "Usage: aurivox check [--json] [--timeout-free] [--pause-after-open] PATH...\n"
    "\n"
    "Opens each PATH with the module's decoder, reads its whole reported length\n"
    "in blocks, and prints one line a file with how that ended: the open's result\n"
    "code and what it means, the frames read, and the last read's result code.\n"
    "A summary follows: \"N files: A decoded, B refused at open (code: count...),\n"
    "C failed while reading\". Reads stop early once 4194304 frames in a row were\n"
    "nothing but zeros, the padding that follows the end of a stream whose header\n"
    "claims more than it holds.\n"
    "\n"
    "Each file gets 120 seconds. A file still running then is reported as hung\n"
    "and the process ends at once with status 3 (a thread stuck inside the\n"
    "platform's media reader cannot be recovered).\n"
    "\n"
    "Exit status: 0 when every file ended with one of the documented result codes\n"
    "(0, 2, 3, 5, 9, 33, 99), 1 when one did not, 2 for a usage error, 3 for a\n"
    "hung file.\n"
    "\n"
    "Options:\n"
    "  --json              print {\"files\": [one object a file], \"summary\": {...}},\n"
    "                      each file's object on a line of its own as it ends\n"
    "  --timeout-free      no time bound: wait for each file as long as it takes\n"
    "  --pause-after-open  after each open, wait for a line on standard input\n"
    "                      before reading, so that a segment can be removed or\n"
    "                      a card pulled meanwhile\n"
    "  -h, --help          show this help\n";

constexpr int kExitHung = 3;
constexpr std::chrono::seconds kPerFileBound{120};
constexpr std::uint32_t kBlockFrames = 4096;
// 64 MiB of host buffers at most, whatever channel count a header claims.
constexpr std::uint64_t kMaxBufferSamples = 16u << 20;
constexpr std::int64_t kZeroRunLimitFrames = 4194304;

struct Options {
  bool json = false;
  bool timeoutFree = false;
  bool pauseAfterOpen = false;
  std::vector<std::string> paths;
};

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Prints the file lines and the summary, as text or as one JSON document
// whose file objects each take a line, flushed as they come so that a
// process that dies still leaves the files before it on record.
class Printer {
 public:
  explicit Printer(bool json) : json_(json) {
    if (json_) std::fputs("{\"files\": [", stdout);
    std::fflush(stdout);
  }

  void File(const FileCheck& check) {
    if (json_) {
      std::printf("%s\n  %s", first_ ? "" : ",", CheckLineJson(check).c_str());
    } else {
      std::printf("%s\n", CheckLineText(check).c_str());
    }
    first_ = false;
    std::fflush(stdout);
  }

  void Summary(const CheckSummary& summary) {
    if (json_) {
      std::printf("\n], \"summary\": %s}\n", summary.Json().c_str());
    } else {
      std::printf("%s\n", summary.Text().c_str());
    }
    std::fflush(stdout);
  }

 private:
  bool json_;
  bool first_ = true;
};

// One buffer a channel of 32-bit slots, as a host hands them over.
class ChannelBuffers {
 public:
  ChannelBuffers(std::uint32_t channels, std::uint32_t frames) : storage_(channels, std::vector<float>(frames)) {
    for (auto& channel : storage_) pointers_.push_back(channel.data());
  }
  float** pointers() { return pointers_.data(); }

  void Clear() {
    for (auto& channel : storage_) std::fill(channel.begin(), channel.end(), 0.0f);
  }

  // True when no byte of the first `frames` slots is set.
  bool AllZero(std::uint32_t frames) const {
    for (const auto& channel : storage_) {
      const auto* bytes = reinterpret_cast<const unsigned char*>(channel.data());
      if (std::any_of(bytes, bytes + std::size_t{frames} * sizeof(float), [](unsigned char b) { return b != 0; })) {
        return false;
      }
    }
    return true;
  }

 private:
  std::vector<std::vector<float>> storage_;
  std::vector<float*> pointers_;
};

void WaitForGoAhead(const std::string& path) {
  std::fprintf(stderr, "aurivox check: opened %s; press Enter to read it\n", path.c_str());
  std::fflush(stderr);
  std::string line;
  std::getline(std::cin, line);
}

// The file's audio, read in blocks up to its reported length.
void ReadAll(Aurivox::Decoder& decoder, FileCheck& check, std::atomic<std::int64_t>& progress) {
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  check.channels = format.GetChannelCount();
  check.durationFrames = decoder.GetDuration();
  if (check.channels == 0) return;

  const std::uint32_t block = BlockFrames(check.channels, kBlockFrames, kMaxBufferSamples);
  ChannelBuffers buffers(check.channels, block);
  ZeroRun zeros(kZeroRunLimitFrames);
  while (check.framesRead < check.durationFrames) {
    const auto frames =
        static_cast<std::uint32_t>(std::min<std::int64_t>(block, check.durationFrames - check.framesRead));
    buffers.Clear();
    imImportAudioRec7 request{};
    request.position = check.framesRead;
    request.size = frames;
    request.buffer = buffers.pointers();
    check.readAttempted = true;
    check.readResult = decoder.ReadAudio(&request);
    if (check.readResult != Aurivox::kResultSuccess) return;
    check.framesRead += frames;
    progress.store(check.framesRead, std::memory_order_relaxed);
    if (zeros.Add(frames, buffers.AllZero(frames))) {
      check.stoppedOnZeros = check.framesRead < check.durationFrames;
      return;
    }
  }
}

class Checker {
 public:
  explicit Checker(const Options& options) : options_(options), printer_(options.json) {
    if (!options.timeoutFree) {
      watchdog_ = std::make_unique<Watchdog>(
          std::chrono::duration_cast<std::chrono::milliseconds>(kPerFileBound), [this] { ReportHang(); },
          kExitHung);
    }
  }

  int Run() {
    for (const std::string& path : options_.paths) printer_.File(Check(path));
    printer_.Summary(summary_);
    // Media sources finish closing on threads of their own after the last
    // release, and the media platform shuts down as soon as this returns.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return summary_.undocumented() > 0 ? kExitFailure : kExitOk;
  }

 private:
  FileCheck Check(const std::string& path) {
    current_ = path;
    progress_.store(0);
    FileCheck check;
    check.path = path;
    Arm();
    // The module is still asked: its result for such a file is what a
    // check records; the tool's words say what the code means here.
    check.inputProblem = InputFileProblem(path);
    double seconds = 0;
    {
      Aurivox::Decoder decoder;
      check.openResult = decoder.Open(orxcore::UTF8to16(path), nullptr);
      if (options_.pauseAfterOpen) {
        seconds = SecondsSince(started_);
        Disarm();
        WaitForGoAhead(path);
        Arm();
      }
      if (check.openResult == Aurivox::kResultSuccess) ReadAll(decoder, check, progress_);
    }  // the decoder closes here, within the bound
    check.seconds = seconds + SecondsSince(started_);
    Disarm();
    summary_.Add(check);
    return check;
  }

  void Arm() {
    started_ = Clock::now();
    if (watchdog_) watchdog_->Arm();
  }

  void Disarm() {
    if (watchdog_) watchdog_->Disarm();
  }

  // On the watchdog's thread, while the main thread is stuck in `current_`.
  void ReportHang() {
    FileCheck check;
    check.path = current_;
    check.hung = true;
    check.framesRead = progress_.load(std::memory_order_relaxed);
    check.seconds = SecondsSince(started_);
    summary_.Add(check);
    printer_.File(check);
    printer_.Summary(summary_);
  }

  const Options& options_;
  Printer printer_;
  CheckSummary summary_;
  std::string current_;
  Clock::time_point started_;
  std::atomic<std::int64_t> progress_{0};
  std::unique_ptr<Watchdog> watchdog_;  // last: stopped before the rest goes
};

}  // namespace

int RunCheck(const Arguments& args) {
  Options options;
  bool optionsEnded = false;
  for (const std::string& arg : args) {
    if (!optionsEnded && (arg == "--help" || arg == "-h")) {
      std::fputs(kHelp, stdout);
      return kExitOk;
    }
    if (optionsEnded || arg.empty() || arg[0] != '-') {
      options.paths.push_back(arg);
    } else if (arg == "--") {
      optionsEnded = true;
    } else if (arg == "--json") {
      options.json = true;
    } else if (arg == "--timeout-free") {
      options.timeoutFree = true;
    } else if (arg == "--pause-after-open") {
      options.pauseAfterOpen = true;
    } else {
      return UsageError(kName, "unknown option '" + arg + "'");
    }
  }
  if (options.paths.empty()) return UsageError(kName, "missing PATH");
  return Checker(options).Run();
}

}  // namespace aurivox_tool
