// aurivox-bench MEDIA_FOLDER [--only overhead|split|memory] [--rounds N]
// The decoder on long files, each figure beside a reference measured in the
// same run:
//   overhead  Decoder::ReadAudio over a 10-minute stereo AAC file and
//             10-minute 5.1 WAVE files (16-bit and float) vs a bare
//             source-reader loop in the same client type, in N rounds
//             (kOverheadRounds unless given);
//   split     decoding the 5.1 WAVE file cut into 3 and 30 segments of a
//             camera recording vs decoding the file itself;
//   memory    peak memory while decoding a 60-minute 5.1 float file vs a
//             10-minute one, each in a fresh process.
// MEDIA_FOLDER holds the files ./scripts/bench makes with FFmpeg.
#include <windows.h>
#include <mfapi.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "BareReader.h"
#include "ProcessMemory.h"
#include "aurivox/Aurivox.h"
#include "aurivox/Decoder.h"
#include "support/DecoderRun.h"
#include "support/Measure.h"
#include "support/SideBySide.h"
#include "support/SplitRecording.h"
#include "support/Table.h"

namespace {

namespace fs = std::filesystem;

constexpr wchar_t kStereoAac[] = L"stereo-aac-10min.m4a";
constexpr wchar_t kSurroundWave[] = L"surround51-s16-10min.wav";
constexpr wchar_t kFloat10[] = L"surround51-f32-10min.wav";
constexpr wchar_t kFloat60[] = L"surround51-f32-60min.wav";
// The decoder's time over the bare reader's.
constexpr double kOverheadGoal = 1.02;
// On one CPU under Wine one round's decoder and bare-reader times differ by
// about 2 % either way (one standard deviation); thirty rounds put the median
// within about 0.5 %.
constexpr int kOverheadRounds = 31;
// The split decodes have no goal and are shown for reading.
constexpr int kSplitDecodeRounds = 9;

orxcore::WString Wide(const fs::path& path) {
  const std::wstring text = path.wstring();
  return orxcore::WString(text.begin(), text.end());
}

// Opens and closes `path` with the exported decoder, reading nothing: the
// fixed part of a decode's cost.
int OpenAndClose(const fs::path& path) {
  Aurivox::Decoder decoder;
  return decoder.Open(Wide(path), nullptr);
}

struct Decoded {
  std::int64_t frames = 0;
  std::uint32_t rate = 0;
  int result = -1;
};

// Reads the reported length of `path` through the exported decoder, as a
// host does.
Decoded DecodeWithDecoder(const fs::path& path) {
  bench::DecoderRun run(Wide(path));
  while (run.Read(INT64_MAX)) {
  }
  return {run.frames(), run.rate(), run.result()};
}

std::string Seconds(double seconds) { return bench::Fixed(seconds, 2); }

// Keeps the process, and the threads it starts from then on, on one CPU
// while it lives. The source reader's threads hand every buffer to the
// caller, and across CPUs each hand-off waits for a wake-up: under Wine a
// decode then takes half as long again, and one round's decoder/reader ratio
// spreads by 6 % where on one CPU it spreads by under 2 %. Both sides pay the
// hand-offs alike, so the ratio measures the same thing, only more sharply.
class ScopedOneCpu {
 public:
  ScopedOneCpu() {
    DWORD_PTR system = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &previous_, &system) || previous_ == 0) return;
    const DWORD_PTR lowest = previous_ & (~previous_ + 1);
    pinned_ = SetProcessAffinityMask(GetCurrentProcess(), lowest) != 0;
  }
  ~ScopedOneCpu() {
    if (pinned_) SetProcessAffinityMask(GetCurrentProcess(), previous_);
  }
  ScopedOneCpu(const ScopedOneCpu&) = delete;
  ScopedOneCpu& operator=(const ScopedOneCpu&) = delete;

 private:
  DWORD_PTR previous_ = 0;
  bool pinned_ = false;
};

void MeasureOverhead(const fs::path& media, int rounds) {
  const ScopedOneCpu oneCpu;
  struct Case {
    const wchar_t* file;
    GUID subtype;
    const char* name;
  };
  const Case cases[] = {{kStereoAac, MFAudioFormat_Float, "10 min stereo AAC, float"},
                        {kSurroundWave, MFAudioFormat_PCM, "10 min 5.1 WAVE, 16-bit PCM"},
                        {kFloat10, MFAudioFormat_Float, "10 min 5.1 WAVE, float, 22.05 kHz"}};
  std::cout << "Decoder overhead, on one CPU: Decoder::ReadAudio in " << bench::DecoderRun::kBlockFrames
            << "-frame blocks, open included, vs a bare IMFSourceReader\nloop in the same client type that copies "
            << "each buffer out once, side by side in turns of " << bench::DecoderRun::kSliceFrames
            << " frames;\nmedian of " << rounds
            << " rounds; x bare = median of the rounds' decoder time / bare reader time (goal at most "
            << bench::Fixed(kOverheadGoal, 2) << "),\nwith the range that holds the true median with 95 % confidence\n\n";
  bench::Table table({"file", "code", "s", "x realtime", "MB delivered", "x bare", "95 % range"});
  for (const Case& c : cases) {
    const fs::path path = media / c.file;
    std::unique_ptr<bench::DecoderRun> decoder;
    std::unique_ptr<bench::BareReader> bare;
    std::int64_t sliceBytes = 0, decoderBytes = 0, bareBytes = 0;
    double audioSeconds = 0;
    bool ok = true;
    const bench::SideBySideResult result = bench::MeasureSideBySide(
        {[&] {
           decoder = std::make_unique<bench::DecoderRun>(Wide(path));
           sliceBytes = bench::DecoderRun::kSliceFrames * decoder->channels() * decoder->width();
         },
         [&] { return decoder->Read(bench::DecoderRun::kSliceFrames); },
         [&] {
           ok = ok && decoder->result() == Aurivox::kResultSuccess;
           decoderBytes = decoder->frames() * decoder->channels() * decoder->width();
           audioSeconds = decoder->rate() ? double(decoder->frames()) / decoder->rate() : 0;
           decoder.reset();
         }},
        {[&] { bare = std::make_unique<bench::BareReader>(path.wstring(), c.subtype); },
         [&] { return bare->Read(sliceBytes) && !bare->done(); },
         [&] {
           ok = ok && !bare->failed();
           bareBytes = bare->bytes();
           bare.reset();
         }},
        rounds);
    const std::vector<double> openSeconds = bench::MedianSecondsPerRun(
        {[&] { ok = ok && OpenAndClose(path) == 0; },
         [&] { ok = ok && !bench::BareReader(path.wstring(), c.subtype).failed(); }},
        rounds);
    if (!ok || bareBytes <= 0) {
      std::cout << "  " << c.name << ": decoding failed\n";
      continue;
    }
    table.AddRow({c.name, "bare IMFSourceReader (reference)", Seconds(result.secondSeconds),
                  bench::Fixed(audioSeconds / result.secondSeconds, 0), bench::Fixed(bareBytes / 1e6, 1), "1.000", "-"});
    table.AddRow({c.name, "Decoder::ReadAudio", Seconds(result.firstSeconds),
                  bench::Fixed(audioSeconds / result.firstSeconds, 0), bench::Fixed(decoderBytes / 1e6, 1),
                  bench::Fixed(result.ratio, 3), bench::RatioRangeText(result)});
    table.AddRow({c.name, "Decoder open + close alone", bench::Fixed(openSeconds[0], 3), "-", "-",
                  bench::Fixed(openSeconds[0] / result.secondSeconds, 3), "-"});
    table.AddRow({c.name, "bare reader open + close alone", bench::Fixed(openSeconds[1], 3), "-", "-",
                  bench::Fixed(openSeconds[1] / result.secondSeconds, 3), "-"});
    bench::PrintSummaryRow(std::cout, {"decoder overhead (Windows)", c.name, Seconds(result.firstSeconds) + " s",
                                       Seconds(result.secondSeconds) + " s bare reader",
                                       bench::Fixed(result.ratio, 3) + " x time (95 %: " +
                                           bench::RatioRangeText(result) + ")"},
                           result.ratio, bench::Goal::AtMost(kOverheadGoal));
  }
  table.Print(std::cout);
  std::cout << "\n";
}

void MeasureSplitDecode(const fs::path& media, int rounds) {
  const fs::path source = media / kSurroundWave;
  // One segment goes through the same byte stream as the split ones, so the
  // ratio to it is the cost of joining alone.
  const bench::SplitRecordings recordings = bench::MakeSplitRecordings(source, media);
  if (recordings.empty()) {
    std::cout << "split: cannot cut " << source.string() << " into segments\n";
    return;
  }
  const auto asPath = [](const orxcore::WString& text) { return fs::path(std::wstring(text.begin(), text.end())); };
  std::cout << "Split recordings: decoding the 10 min 5.1 WAVE file through the first segment of a camera\n"
            << "recording that holds it in 1, 3 and 30 segment files, and the file itself by its path; median of "
            << rounds << " rounds;\nx one segment = time / time of the one-segment recording\n\n";
  bench::Table table({"source", "s", "frames", "x one segment"});
  Decoded results[4];
  const std::vector<double> seconds = bench::MedianSecondsPerRun(
      {[&] { results[0] = DecodeWithDecoder(asPath(recordings.one.firstSegment)); },
       [&] { results[1] = DecodeWithDecoder(asPath(recordings.three.firstSegment)); },
       [&] { results[2] = DecodeWithDecoder(asPath(recordings.thirty.firstSegment)); },
       [&] { results[3] = DecodeWithDecoder(source); }},
      rounds);
  const char* names[] = {"1 segment (reference)", "3 segments", "30 segments", "unsplit file by path"};
  for (std::size_t i = 0; i < 4; ++i) {
    const bool ok = results[i].result == Aurivox::kResultSuccess && results[i].frames == results[0].frames;
    table.AddRow({names[i], Seconds(seconds[i]), ok ? std::to_string(results[i].frames) : "FAILED",
                  bench::Fixed(seconds[i] / seconds[0], 3)});
    if (i == 0) continue;
    bench::PrintSummaryRow(std::cout, {"split decode (Windows)", std::string("10 min 5.1 WAVE, ") + names[i],
                                       Seconds(seconds[i]) + " s", Seconds(seconds[0]) + " s one segment",
                                       bench::Fixed(seconds[i] / seconds[0], 3) + " x time"},
                           seconds[i] / seconds[0], bench::Goal{});
  }
  table.Print(std::cout);
  std::cout << "\n";
}

// --peak decoder|bare FILE: decodes FILE in this process, through the
// decoder or a bare source reader, and prints its memory counters.
int ReportPeak(const std::wstring& how, const fs::path& path) {
  Aurivox::Initialize();
  const bench::MemoryCounters before = bench::SampleMemoryCounters();
  long long frames = 0;
  unsigned rate = 0;
  bool ok = false;
  if (how == L"bare") {
    const std::int64_t bytes = bench::DecodeWithBareReader(path.wstring(), MFAudioFormat_Float);
    frames = bytes / 24;  // 5.1 float
    ok = bytes > 0;
  } else {
    const Decoded decoded = DecodeWithDecoder(path);
    frames = decoded.frames;
    rate = decoded.rate;
    ok = decoded.result == Aurivox::kResultSuccess;
  }
  const bench::MemoryCounters after = bench::SampleMemoryCounters();
  std::printf("%lld %u %llu %llu %llu %llu\n", frames, rate, static_cast<unsigned long long>(before.workingSet),
              static_cast<unsigned long long>(after.peakWorkingSet),
              static_cast<unsigned long long>(before.pagefileUsage),
              static_cast<unsigned long long>(after.peakPagefileUsage));
  std::fflush(stdout);
  Sleep(100);  // Wine's media sources finish closing on their own threads
  Aurivox::Terminate();
  return ok ? 0 : 1;
}

struct Peak {
  long long frames = 0;
  unsigned rate = 0;
  unsigned long long workingSetBefore = 0, peakWorkingSet = 0, pagefileBefore = 0, peakPagefile = 0;
  double WorkingSetGrowth() const { return double(peakWorkingSet - workingSetBefore); }
  double PagefileGrowth() const { return double(peakPagefile - pagefileBefore); }
};

bool MeasurePeak(const wchar_t* how, const fs::path& path, Peak& peak) {
  std::string output;
  if (!bench::RunSelf(L"--peak " + std::wstring(how) + L" \"" + path.wstring() + L"\"", output)) return false;
  return std::sscanf(output.c_str(), "%lld %u %llu %llu %llu %llu", &peak.frames, &peak.rate,
                     &peak.workingSetBefore, &peak.peakWorkingSet, &peak.pagefileBefore, &peak.peakPagefile) == 6;
}

std::string MiB(double bytes) { return bench::Fixed(bytes / 1048576.0, 1); }

void MeasureMemory(const fs::path& media) {
  std::cout << "Peak memory while decoding a 5.1 32-bit float WAVE file whole (22,050 Hz), each run in a fresh\n"
            << "process, through the decoder and through a bare IMFSourceReader loop (float client type);\n"
            << "growth = PeakWorkingSetSize or PeakPagefileUsage - its value before the open;\n"
            << "x 10 min = growth / growth of the same code on the 10-minute file\n\n";
  bench::Table table({"code", "file", "frames", "peak working set MiB", "growth MiB", "peak pagefile MiB",
                      "growth MiB", "x 10 min (working set)", "x 10 min (pagefile)"});
  Peak peaks[2][2];  // [decoder, bare][10, 60 min]
  const wchar_t* hows[] = {L"decoder", L"bare"};
  const wchar_t* files[] = {kFloat10, kFloat60};
  for (int h = 0; h < 2; ++h) {
    for (int f = 0; f < 2; ++f) {
      if (!MeasurePeak(hows[h], media / files[f], peaks[h][f])) {
        std::cout << "memory: decoding " << fs::path(files[f]).string() << " failed\n\n";
        return;
      }
    }
  }
  const char* codes[] = {"Decoder::ReadAudio", "bare IMFSourceReader (reference)"};
  const char* names[] = {"10 min", "60 min"};
  for (int h = 0; h < 2; ++h) {
    const Peak& ten = peaks[h][0];
    for (int f = 0; f < 2; ++f) {
      const Peak& p = peaks[h][f];
      table.AddRow({codes[h], names[f], std::to_string(p.frames), MiB(double(p.peakWorkingSet)),
                    MiB(p.WorkingSetGrowth()), MiB(double(p.peakPagefile)), MiB(p.PagefileGrowth()),
                    bench::Fixed(p.WorkingSetGrowth() / ten.WorkingSetGrowth(), 2),
                    bench::Fixed(p.PagefileGrowth() / ten.PagefileGrowth(), 2)});
    }
  }
  table.Print(std::cout);
  std::cout << "\n";
  const Peak& sixty = peaks[0][1];
  const Peak& bareSixty = peaks[1][1];
  // The decoder's growth from the 10- to the 60-minute file beyond the bare reader's.
  const double beyondBare = (sixty.WorkingSetGrowth() - peaks[0][0].WorkingSetGrowth()) -
                            (bareSixty.WorkingSetGrowth() - peaks[1][0].WorkingSetGrowth());
  bench::PrintSummaryRow(
      std::cout, {"peak memory (Windows)", "10 -> 60 min 5.1 float: decoder vs bare reader",
                  MiB(sixty.WorkingSetGrowth() - peaks[0][0].WorkingSetGrowth()) + " MiB more working set",
                  MiB(bareSixty.WorkingSetGrowth() - peaks[1][0].WorkingSetGrowth()) + " MiB more, bare reader",
                  MiB(beyondBare) + " MiB beyond the bare reader's"},
      beyondBare / (1 << 20), bench::Goal::AtMost(1.0));
}

std::vector<std::wstring> WideArguments() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> out;
  for (int i = 1; arguments && i < count; ++i) out.emplace_back(arguments[i]);
  LocalFree(arguments);
  return out;
}

int Usage() {
  std::cerr << "usage: aurivox-bench MEDIA_FOLDER [--only overhead|split|memory]... [--rounds N]\n";
  return 2;
}

}  // namespace

int main() {
  const std::vector<std::wstring> args = WideArguments();
  if (args.size() == 3 && args[0] == L"--peak") return ReportPeak(args[1], args[2]);

  fs::path media;
  std::set<std::wstring> only;
  int rounds = kOverheadRounds;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == L"--only" && i + 1 < args.size()) {
      only.insert(args[++i]);
    } else if (args[i] == L"--rounds" && i + 1 < args.size()) {
      rounds = std::max(1, _wtoi(args[++i].c_str()));
    } else if (media.empty() && args[i].rfind(L"--", 0) != 0) {
      media = args[i];
    } else {
      return Usage();
    }
  }
  if (media.empty()) return Usage();
  const auto wanted = [&](const wchar_t* part) { return only.empty() || only.count(part) > 0; };

  Aurivox::Initialize();
  if (wanted(L"overhead")) MeasureOverhead(media, rounds);
  if (wanted(L"split")) MeasureSplitDecode(media, kSplitDecodeRounds);
  if (wanted(L"memory")) MeasureMemory(media);
  Sleep(100);  // Wine's media sources finish closing on their own threads
  Aurivox::Terminate();
  return 0;
}
