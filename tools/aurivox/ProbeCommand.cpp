// aurivox probe FILE [--json]: what the module reports for a file.
#include <cinttypes>
#include <cstdio>
#include <string>
#include <vector>

#include "AVCHDUtils.h"
#include "Commands.h"
#include "InputFile.h"
#include "Json.h"
#include "ResultText.h"
#include "aurivox/Decoder.h"
#include "orxmediatypes/AudioFormat.h"

namespace aurivox_tool {
namespace {

constexpr char kHelp[] =
    "Usage: aurivox probe FILE [--json]\n"
    "\n"
    "Opens FILE as a host would and prints its audio format, length, codec\n"
    "identifier and description, and for a split camera recording the segment\n"
    "files that are read as one stream.\n"
    "\n"
    "Options:\n"
    "  --json     print one JSON object (keys: path, result, sampleRate, channels,\n"
    "             sampleType, channelLabels, durationFrames, durationSeconds,\n"
    "             codecId, codecFourCC, description, segments)\n"
    "  -h, --help show this help\n";

struct ProbeReport {
  std::string path;
  int result = 0;
  orxmediatypes::AudioFormat format;
  std::vector<std::int32_t> labels;
  std::int64_t durationFrames = 0;
  std::uint32_t codecId = 0;
  std::string description;
  std::vector<std::string> segments;
};

const char* SampleTypeName(std::int32_t type) {
  switch (type) {
    case 10: return "int8";
    case 20: return "int16";
    case 30: return "int24";
    case 40: return "int32";
    default: return "float32";
  }
}

std::string FourCC(std::uint32_t id) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const char c = static_cast<char>((id >> shift) & 0xFF);
    text += (c >= 0x20 && c < 0x7F) ? c : '.';
  }
  return text;
}

double Seconds(const ProbeReport& r) {
  return r.format.GetSampleRate() ? double(r.durationFrames) / r.format.GetSampleRate() : 0.0;
}

ProbeReport Probe(const std::string& path) {
  ProbeReport report;
  report.path = path;
  const orxcore::WString widePath = orxcore::UTF8to16(path);
  Aurivox::Decoder decoder;
  imFileInfoRec8 info{};
  report.result = decoder.Open(widePath, &info);
  if (AVCHDUtils::IsSpannedClipFile(widePath)) {
    std::vector<orxcore::WString> segments;
    AVCHDUtils::FindSpannedSegments(widePath, segments);
    for (const auto& segment : segments) report.segments.push_back(orxcore::UTF16toStdString(segment));
  }
  if (report.result != Aurivox::kResultSuccess) return report;
  decoder.GetAudioFormat(report.format);
  imGetAudioChannelLayoutRec layout{};
  if (decoder.OnGetAudioChannelLayout(&layout) == Aurivox::kResultSuccess) {
    for (std::uint32_t i = 0; i < report.format.GetChannelCount() && i < kQzMaxAudioChannelLabels; ++i) {
      report.labels.push_back(layout.channelLabels[i]);
    }
  }
  report.durationFrames = decoder.GetDuration();
  report.codecId = decoder.GetCodecID();
  report.description = orxcore::UTF16toStdString(decoder.GetCodecDescription());
  return report;
}

void PrintJson(const ProbeReport& r) {
  char codecId[16];
  std::snprintf(codecId, sizeof codecId, "0x%08X", r.codecId);
  Json json = {{"path", r.path}, {"result", r.result}};
  if (r.result != Aurivox::kResultSuccess) json["error"] = DescribeResult(r.result);
  json["sampleRate"] = r.format.GetSampleRate();
  json["channels"] = r.format.GetChannelCount();
  json["sampleType"] = SampleTypeName(r.format.GetSampleType());
  json["channelLabels"] = r.labels;
  json["durationFrames"] = r.durationFrames;
  json["durationSeconds"] = RoundedSeconds(Seconds(r), 6);
  json["codecId"] = codecId;
  json["codecFourCC"] = FourCC(r.codecId);
  json["description"] = r.description;
  json["segments"] = r.segments;
  std::printf("%s\n", JsonLine(json).c_str());
}

void PrintText(const ProbeReport& r) {
  std::printf("File:         %s\n", r.path.c_str());
  std::printf("Result:       %d (%s)\n", r.result, DescribeResult(r.result));
  if (r.format.GetChannelCount() == 0) {
    std::printf("Audio:        none\n");
  } else {
    std::printf("Sample rate:  %u Hz\n", r.format.GetSampleRate());
    std::printf("Channels:     %u (%s)\n", r.format.GetChannelCount(),
                orxmediatypes::AudioChannelLayoutDescription(r.format.GetChannelLayout()).c_str());
    std::string labels;
    for (std::int32_t label : r.labels) labels += (labels.empty() ? "" : " ") + std::to_string(label);
    std::printf("Labels:       %s\n", labels.c_str());
    std::printf("Sample type:  %s (%d)\n", SampleTypeName(r.format.GetSampleType()), r.format.GetSampleType());
    std::printf("Duration:     %" PRId64 " frames (%.3f s)\n", r.durationFrames, Seconds(r));
    std::printf("Codec:        0x%08X '%s'\n", r.codecId, FourCC(r.codecId).c_str());
    std::printf("Description:  %s\n", r.description.c_str());
  }
  for (std::size_t i = 0; i < r.segments.size(); ++i) {
    std::printf("%s %s\n", i == 0 ? "Segments:    " : "             ", r.segments[i].c_str());
  }
}

}  // namespace

int RunProbe(const Arguments& args) {
  std::string path;
  bool json = false;
  for (const std::string& arg : args) {
    if (arg == "--help" || arg == "-h") {
      std::fputs(kHelp, stdout);
      return kExitOk;
    }
    if (arg == "--json") {
      json = true;
    } else if (!arg.empty() && arg[0] == '-') {
      return UsageError("probe", "unknown option '" + arg + "'");
    } else if (path.empty()) {
      path = arg;
    } else {
      return UsageError("probe", "only one FILE may be given");
    }
  }
  if (path.empty()) return UsageError("probe", "missing FILE");
  if (const std::string problem = InputFileProblem(path); !problem.empty()) {
    return Fail("cannot open " + path + ": " + problem);
  }

  const ProbeReport report = Probe(path);
  json ? PrintJson(report) : PrintText(report);
  if (report.result != Aurivox::kResultSuccess) {
    if (!json) Fail("cannot open " + path + ": " + DescribeResult(report.result));
    return kExitFailure;
  }
  return kExitOk;
}

}  // namespace aurivox_tool
