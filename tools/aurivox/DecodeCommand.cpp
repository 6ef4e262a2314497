// aurivox decode FILE OUT.wav [--block FRAMES]: the file's audio, as the
// module delivers it, written to a WAVE (or RF64) file.
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Commands.h"
#include "InputFile.h"
#include "Progress.h"
#include "ResultText.h"
#include "WaveWriter.h"
#include "aurivox/Decoder.h"

namespace aurivox_tool {
namespace {

constexpr char kHelp[] =
    "Usage: aurivox decode FILE OUT.wav [--block FRAMES]\n"
    "\n"
    "Decodes the audio of FILE through the module, exactly the reported number\n"
    "of frames, and writes it to OUT.wav in the sample format the module\n"
    "delivers (integer PCM for PCM sources, 32-bit float otherwise). Output\n"
    "past 4 GiB is written as RF64. A partial output is removed on failure.\n"
    "\n"
    "Options:\n"
    "  --block FRAMES  frames asked for in each read (default 4096)\n"
    "  -h, --help      show this help\n";

constexpr std::uint32_t kDefaultBlock = 4096;
constexpr std::uint32_t kMaxBlock = 1u << 20;

bool ParseBlock(const std::string& text, std::uint32_t& block) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos || text.size() > 7) {
    return false;
  }
  block = static_cast<std::uint32_t>(std::stoul(text));
  return block > 0 && block <= kMaxBlock;
}

// Interleaves `frames` samples of `width` bytes from one buffer a channel.
void Interleave(const std::vector<std::vector<float>>& channels, std::uint32_t frames, std::uint32_t width,
                std::vector<std::uint8_t>& out) {
  out.resize(std::size_t{frames} * channels.size() * width);
  std::uint8_t* target = out.data();
  for (std::uint32_t f = 0; f < frames; ++f) {
    for (const auto& channel : channels) {
      std::memcpy(target, reinterpret_cast<const std::uint8_t*>(channel.data()) + std::size_t{f} * width, width);
      target += width;
    }
  }
}

}  // namespace

int RunDecode(const Arguments& args) {
  std::vector<std::string> paths;
  std::uint32_t block = kDefaultBlock;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--help" || arg == "-h") {
      std::fputs(kHelp, stdout);
      return kExitOk;
    }
    if (arg == "--block") {
      if (i + 1 == args.size() || !ParseBlock(args[++i], block)) {
        return UsageError("decode", "--block needs a frame count from 1 to " + std::to_string(kMaxBlock));
      }
    } else if (!arg.empty() && arg[0] == '-') {
      return UsageError("decode", "unknown option '" + arg + "'");
    } else {
      paths.push_back(arg);
    }
  }
  if (paths.size() != 2) return UsageError("decode", "expected FILE and OUT.wav");
  const std::string& input = paths[0];
  const std::string& output = paths[1];

  if (const std::string problem = InputFileProblem(input); !problem.empty()) {
    return Fail("cannot open " + input + ": " + problem);
  }
  Aurivox::Decoder decoder;
  const int opened = decoder.Open(orxcore::UTF8to16(input), nullptr);
  if (opened != Aurivox::kResultSuccess) {
    return Fail("cannot open " + input + ": " + DescribeResult(opened) + " (result " +
                std::to_string(opened) + ")");
  }
  orxmediatypes::AudioFormat format;
  decoder.GetAudioFormat(format);
  audiofile::WaveFormat wave;
  if (format.GetChannelCount() == 0) return Fail(input + " has no audio to decode");
  if (!audiofile::MakeWaveFormat(format, wave)) {
    return Fail("the audio format of " + input + " cannot be written as WAVE");
  }
  const std::uint32_t width = audiofile::BytesPerSample(format);
  const std::int64_t total = decoder.GetDuration();

  audiofile::WaveWriter writer;
  if (!writer.Open(orxcore::UTF8to16(output), wave)) return Fail("cannot create " + output);

  // The host's buffers hold 32-bit samples; narrower samples arrive packed.
  std::vector<std::vector<float>> channels(format.GetChannelCount(), std::vector<float>(block));
  std::vector<float*> pointers;
  for (auto& channel : channels) pointers.push_back(channel.data());
  std::vector<std::uint8_t> interleaved;
  ProgressBar progress(total);

  std::int64_t done = 0;
  while (done < total) {
    const auto frames = static_cast<std::uint32_t>(std::min<std::int64_t>(block, total - done));
    imImportAudioRec7 request{};
    request.position = done;
    request.size = frames;
    request.buffer = pointers.data();
    const int result = decoder.ReadAudio(&request);
    if (result != Aurivox::kResultSuccess) {
      writer.Abort();
      return Fail("reading " + input + " failed at frame " + std::to_string(done) + ": " +
                  DescribeResult(result) + " (result " + std::to_string(result) + ")");
    }
    Interleave(channels, frames, width, interleaved);
    if (!writer.Write(interleaved.data(), interleaved.size())) {
      writer.Abort();
      return Fail("writing " + output + " failed (disk full?)");
    }
    done += frames;
    progress.Update(done);
  }
  if (!writer.Finalize()) {
    writer.Abort();
    return Fail("finishing " + output + " failed");
  }
  std::printf("Wrote %" PRId64 " frames (%.3f s) of %u-channel %s at %u Hz to %s\n", total,
              format.GetSampleRate() ? double(total) / format.GetSampleRate() : 0.0,
              format.GetChannelCount(),
              format.GetSampleType() == 0 ? "32-bit float" : (std::to_string(width * 8) + "-bit PCM").c_str(),
              format.GetSampleRate(), output.c_str());
  return kExitOk;
}

}  // namespace aurivox_tool
