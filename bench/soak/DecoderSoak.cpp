// decoder_soak [--decoders N] [--only KIND]
// Opens, reads a few blocks of and closes N decoders in one process, plain
// files and split camera recordings in turn, and fails when the process's
// handle count or private memory kept growing after the first 100: whatever
// a decoder leaks shows up thousands of times over.
//
// The platform keeps some memory of its own for every source reader (Wine 8
// about 20 KiB), so as many bare source readers, making the Media
// Foundation calls a decoder makes, run in the same process; the bound is on
// the decoders' growth beyond theirs.
#include <windows.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "MediaFixtures.h"
#include "PlaylistBuilder.h"
#include "ProcessCounters.h"
#include "ReferenceReader.h"
#include "aurivox/Aurivox.h"
#include "aurivox/Decoder.h"

namespace {

using aurivox_test::ProcessCounters;

constexpr int kDefaultDecoders = 10000;
constexpr int kReadsPerDecoder = 3;
constexpr std::uint32_t kBlockFrames = 4096;
// What may still grow after the first 100: caches that settle, not a leak
// (a leak of one handle or 2 KiB a decoder fails within 10,000 decoders).
constexpr std::int64_t kHandleBound = 50;
constexpr std::int64_t kPrivateBytesBound = 16 << 20;

// The kinds of file the decoders take in turn.
const char* const kKinds[] = {"wav", "split-wav", "m4a", "split-m4a"};
constexpr int kKindCount = 4;

struct Options {
  int decoders = kDefaultDecoders;
  int only = -1;  // an index into kKinds, to tell which kind grows
};

bool ParseOptions(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--decoders" && i + 1 < argc) {
      options.decoders = std::atoi(argv[++i]);
    } else if (arg == "--only" && i + 1 < argc) {
      const std::string kind = argv[++i];
      for (int k = 0; k < kKindCount; ++k) {
        if (kind == kKinds[k]) options.only = k;
      }
      if (options.only < 0) return false;
    } else {
      return false;
    }
  }
  return options.decoders >= 200 && options.decoders % 10 == 0;
}

// A split recording of `source` in three segments, as a camera writes one.
class SplitRecording {
 public:
  explicit SplitRecording(const std::vector<std::uint8_t>& source) {
    tree_.WriteSplitRecording(source, {33, source.size() / 2 + 1});
  }
  orxcore::WString SecondSegment() const { return tree_.Path("STREAM/00012.MTS"); }

 private:
  aurivox_test::RecordingTree tree_;
};

// What one kind opens: the decoder's path, and the unsplit file with the way
// the reference reader opens it.
struct Kind {
  orxcore::WString decoderPath;
  std::wstring referencePath;
  bool split;
};

// Opens `path`, reads a few blocks and closes; false, with a message, when
// anything returned a failure.
bool OpenReadClose(const orxcore::WString& path, std::string& failure) {
  Aurivox::Decoder decoder;
  const int opened = decoder.Open(path, nullptr);
  if (opened != Aurivox::kResultSuccess) {
    failure = "open returned " + std::to_string(opened);
    return false;
  }
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  std::vector<std::vector<float>> channels(format.GetChannelCount(), std::vector<float>(kBlockFrames));
  std::vector<float*> buffers;
  for (auto& channel : channels) buffers.push_back(channel.data());
  imImportAudioRec7 request{};
  request.size = kBlockFrames;
  request.buffer = buffers.data();
  for (int i = 0; i < kReadsPerDecoder; ++i) {
    const int read = decoder.ReadAudio(&request);
    if (read != Aurivox::kResultSuccess) {
      failure = "read " + std::to_string(i + 1) + " returned " + std::to_string(read);
      return false;
    }
  }
  return true;
}

double MiB(std::int64_t bytes) { return static_cast<double>(bytes) / (1 << 20); }

class Soak {
 public:
  Soak(const Options& options, const std::vector<Kind>& kinds) : options_(options), kinds_(kinds) {}

  int Run() {
    PrintHeading();
    // A first round of each settles the caches.
    RunDecoders(0, kWarmUp, false);
    RunReferences(0, kWarmUp);
    const int measured = options_.decoders - kWarmUp;
    const ProcessCounters start = aurivox_test::SampleProcessCounters();
    std::printf("  decoders   handles  private MiB\n");
    Print(kWarmUp, start);
    // Reference readers before and after the decoders, half each, so that
    // neither side always finds the heap the other one left.
    std::int64_t referenceGrowth = RunReferences(kWarmUp, measured / 2);
    const std::int64_t decoderGrowth = RunDecoders(kWarmUp, measured, true);
    referenceGrowth += RunReferences(kWarmUp + measured / 2, measured - measured / 2);
    return Judge(start, aurivox_test::SampleProcessCounters(), decoderGrowth, referenceGrowth);
  }

 private:
  static constexpr int kWarmUp = 100;

  const Kind& KindFor(int index) const {
    return kinds_[options_.only >= 0 ? static_cast<std::size_t>(options_.only)
                                     : static_cast<std::size_t>(index) % kinds_.size()];
  }

  // Decoders `first` to `first + count - 1`; returns their private-memory
  // growth.
  std::int64_t RunDecoders(int first, int count, bool report) {
    const auto before = static_cast<std::int64_t>(aurivox_test::SamplePrivateBytes());
    for (int i = first; i < first + count; ++i) {
      std::string failure;
      if (!OpenReadClose(KindFor(i).decoderPath, failure)) Failed("decoder", i, failure);
      if (report && (i + 1) % (options_.decoders / 10) == 0) Print(i + 1, aurivox_test::SampleProcessCounters());
    }
    return static_cast<std::int64_t>(aurivox_test::SamplePrivateBytes()) - before;
  }

  std::int64_t RunReferences(int first, int count) {
    const auto before = static_cast<std::int64_t>(aurivox_test::SamplePrivateBytes());
    for (int i = first; i < first + count; ++i) {
      const Kind& kind = KindFor(i);
      if (!aurivox_test::OpenReadCloseReference(kind.referencePath, kind.split, kReadsPerDecoder * kBlockFrames)) {
        Failed("reference reader", i, "a Media Foundation call failed");
      }
    }
    return static_cast<std::int64_t>(aurivox_test::SamplePrivateBytes()) - before;
  }

  void Failed(const char* what, int index, const std::string& failure) {
    if (++failures_ <= 5) std::printf("%s %d: %s\n", what, index + 1, failure.c_str());
  }

  void PrintHeading() const {
    if (options_.only >= 0) {
      std::printf("%d decoders, all on the %s file; ", options_.decoders, kKinds[options_.only]);
    } else {
      std::printf("%d decoders, in turn on a WAVE file, a split WAVE recording, an M4A file and a split M4A\n"
                  "recording; ",
                  options_.decoders);
    }
    std::printf("each opened, read %d x %u frames and closed. As many reference readers (the\n"
                "same Media Foundation calls, no module) run before and after them, half each.\n\n",
                kReadsPerDecoder, kBlockFrames);
  }

  void Print(int decoders, const ProcessCounters& counters) const {
    std::printf("%10d  %8" PRIu32 "  %11.1f\n", decoders, counters.handles,
                MiB(static_cast<std::int64_t>(counters.privateBytes)));
    std::fflush(stdout);
  }

  int Judge(const ProcessCounters& start, const ProcessCounters& end, std::int64_t decoderGrowth,
            std::int64_t referenceGrowth) const {
    const std::int64_t handleGrowth = std::int64_t{end.handles} - start.handles;
    const std::int64_t ownGrowth = decoderGrowth - referenceGrowth;
    std::printf("\nafter the first %d: handles %+" PRId64 " (bound +%" PRId64 "); private memory: decoders %+.2f MiB,"
                " reference readers %+.2f MiB,\ndecoders beyond the reference %+.2f MiB (bound +%.0f MiB)\n",
                kWarmUp, handleGrowth, kHandleBound, MiB(decoderGrowth), MiB(referenceGrowth), MiB(ownGrowth),
                MiB(kPrivateBytesBound));

    bool passed = true;
    if (start.handles == 0 || start.privateBytes == 0) {
      std::printf("FAIL: the process's handle count or private memory could not be read\n");
      passed = false;
    }
    if (failures_ > 0) {
      std::printf("FAIL: %d opens or reads failed\n", failures_);
      passed = false;
    }
    if (handleGrowth > kHandleBound) {
      std::printf("FAIL: handles grew by %" PRId64 "\n", handleGrowth);
      passed = false;
    }
    if (ownGrowth > kPrivateBytesBound) {
      std::printf("FAIL: the decoders' private memory grew %.2f MiB more than the reference readers'\n",
                  MiB(ownGrowth));
      passed = false;
    }
    std::printf("decoder soak: %s\n", passed ? "PASS" : "FAIL");
    // A row for the summary table of ./scripts/bench.
    std::printf("@summary\tsoak (Windows)\t%d decoders, plain and split\thandles %+" PRId64 " (bound +%" PRId64
                ")\tprivate %+.2f MiB, bare readers %+.2f MiB\t%+.2f MiB beyond\t<= %.0f MiB, handles <= %" PRId64
                "\t%s\n",
                options_.decoders, handleGrowth, kHandleBound, MiB(decoderGrowth), MiB(referenceGrowth),
                MiB(ownGrowth), MiB(kPrivateBytesBound), kHandleBound, passed ? "yes" : "no");
    return passed ? 0 : 1;
  }

  const Options& options_;
  const std::vector<Kind>& kinds_;
  int failures_ = 0;
};

std::wstring Wide(const orxcore::WString& text) { return std::wstring(text.begin(), text.end()); }

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!ParseOptions(argc, argv, options)) {
    std::fprintf(stderr,
                 "usage: decoder_soak [--decoders N] [--only wav|split-wav|m4a|split-m4a]\n"
                 "(N a multiple of 10, at least 200)\n");
    return 2;
  }
  Aurivox::Initialize();
  int status = 1;
  {
    const SplitRecording splitWave(aurivox_test::ReadMediaFixture("pcm_s16.wav"));
    const SplitRecording splitAac(aurivox_test::ReadMediaFixture("stereo.m4a"));
    const auto wave = aurivox_test::MediaFixtureWPath("pcm_s16.wav");
    const auto aac = aurivox_test::MediaFixtureWPath("stereo.m4a");
    const std::vector<Kind> kinds = {{wave, Wide(wave), false},
                                     {splitWave.SecondSegment(), Wide(wave), true},
                                     {aac, Wide(aac), false},
                                     {splitAac.SecondSegment(), Wide(aac), true}};
    status = Soak(options, kinds).Run();
  }
  // Wine's media sources finish closing on their own threads after the last
  // release; shutting down at once can crash the process.
  Sleep(100);
  Aurivox::Terminate();
  return status;
}
