// decoder-load [--threads N] [--seconds S] FILE...
// A host under load: N threads each open a decoder on the given files in
// turn, read it to the end in 4,096-frame blocks and close it, for S
// seconds. Every decode must equal the one the decoder gives alone, and the
// process's handles must stay within a small bound. Prints decodes a second
// and the handle and memory figures, and a verdict line.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cmath>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "ProcessCounters.h"
#include "aurivox/Aurivox.h"
#include "aurivox/Decoder.h"
#include "orxcore/String.h"

namespace {

constexpr std::uint32_t kBlockFrames = 4096;
// Handles the platform may still open for its own caches once warm.
constexpr long kHandleBound = 64;
// Wine's AAC decoder is not deterministic from run to run (up to about
// 0.011); integer PCM must match exactly.
constexpr float kFloatTolerance = 0.05f;

struct Decode {
  std::vector<std::uint8_t> bytes;
  bool isFloat = false;
};

bool SameAudio(const Decode& a, const Decode& b) {
  if (a.bytes.size() != b.bytes.size() || a.isFloat != b.isFloat) return false;
  if (!a.isFloat) return a.bytes == b.bytes;
  for (std::size_t i = 0; i + sizeof(float) <= a.bytes.size(); i += sizeof(float)) {
    float x, y;
    std::memcpy(&x, a.bytes.data() + i, sizeof x);
    std::memcpy(&y, b.bytes.data() + i, sizeof y);
    if (!(std::fabs(x - y) <= kFloatTolerance)) return false;
  }
  return true;
}

// Every channel's samples, as the bytes the decoder wrote, one after another;
// empty when the open or a read failed.
Decode DecodeAll(const orxcore::WString& path) {
  Aurivox::Decoder decoder;
  imFileInfoRec8 info{};
  if (decoder.Open(path, &info) != Aurivox::kResultSuccess || info.numChannels == 0) return {};
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  const std::int64_t frames = info.audioDuration;
  std::vector<std::vector<float>> channels(info.numChannels, std::vector<float>(kBlockFrames));
  std::vector<float*> pointers;
  for (auto& channel : channels) pointers.push_back(channel.data());
  Decode out;
  out.isFloat = format.GetSampleType() == 0;
  for (std::int64_t done = 0; done < frames; done += kBlockFrames) {
    imImportAudioRec7 rec{};
    rec.position = done;
    rec.size = static_cast<std::uint32_t>(std::min<std::int64_t>(kBlockFrames, frames - done));
    rec.buffer = pointers.data();
    if (decoder.ReadAudio(&rec) != Aurivox::kResultSuccess) return {};
    for (const auto& channel : channels) {
      const auto* bytes = reinterpret_cast<const std::uint8_t*>(channel.data());
      out.bytes.insert(out.bytes.end(), bytes, bytes + rec.size * sizeof(float));
    }
  }
  decoder.Quiet();
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  int threads = 8;
  int seconds = 120;
  std::vector<orxcore::WString> files;
  for (int i = 1; i < argc; ++i) {
    if (!std::strcmp(argv[i], "--threads") && i + 1 < argc) {
      threads = std::atoi(argv[++i]);
    } else if (!std::strcmp(argv[i], "--seconds") && i + 1 < argc) {
      seconds = std::atoi(argv[++i]);
    } else {
      files.push_back(orxcore::UTF8to16(argv[i]));
    }
  }
  if (files.empty() || threads < 1 || seconds < 1) {
    std::fputs("usage: decoder-load [--threads N] [--seconds S] FILE...\n", stderr);
    return 2;
  }

  Aurivox::Initialize();
  std::vector<Decode> expected;
  for (const auto& file : files) {
    expected.push_back(DecodeAll(file));
    if (expected.back().bytes.empty()) {
      std::fprintf(stderr, "decoder-load: %s does not decode alone\n", orxcore::UTF16toStdString(file).c_str());
      return 2;
    }
  }
  const aurivox_test::ProcessCounters before = aurivox_test::SampleProcessCounters();

  std::atomic<long> decodes{0};
  std::atomic<long> mismatches{0};
  std::vector<std::atomic<long>> failedOpens(files.size()), differences(files.size());
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  std::vector<std::thread> workers;
  for (int t = 0; t < threads; ++t) {
    workers.emplace_back([&, t] {
      for (std::size_t next = t; std::chrono::steady_clock::now() < end; ++next) {
        const std::size_t file = next % files.size();
        const Decode decoded = DecodeAll(files[file]);
        if (!SameAudio(decoded, expected[file])) {
          ++mismatches;
          ++(decoded.bytes.empty() ? failedOpens[file] : differences[file]);
        }
        ++decodes;
      }
    });
  }
  for (auto& worker : workers) worker.join();
  const aurivox_test::ProcessCounters after = aurivox_test::SampleProcessCounters();
  Aurivox::Terminate();

  for (std::size_t f = 0; f < files.size(); ++f) {
    if (failedOpens[f] || differences[f]) {
      std::printf("decoder load: %s: %ld failed to open or read, %ld decoded differently\n",
                  orxcore::UTF16toStdString(files[f]).c_str(), failedOpens[f].load(), differences[f].load());
    }
  }
  const long handleGrowth = static_cast<long>(after.handles) - static_cast<long>(before.handles);
  std::printf("decoder load: %d threads, %d s, %ld decodes (%.1f a second), %ld differ from the decoder alone\n",
              threads, seconds, decodes.load(), decodes.load() / static_cast<double>(seconds), mismatches.load());
  std::printf("decoder load: handles %u -> %u (%+ld, bound +%ld), private memory %.1f -> %.1f MiB\n",
              before.handles, after.handles, handleGrowth, kHandleBound, before.privateBytes / 1048576.0,
              after.privateBytes / 1048576.0);
  const bool pass = mismatches == 0 && handleGrowth <= kHandleBound && decodes > 0;
  std::printf("decoder load: %s\n", pass ? "PASS" : "FAIL");
  std::fflush(stdout);
  return pass ? 0 : 1;
}
