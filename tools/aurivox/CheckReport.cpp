#include "CheckReport.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "Json.h"
#include "ResultText.h"

namespace aurivox_tool {
namespace {

constexpr int kDocumentedResults[] = {0, 2, 3, 5, 9, 33, 99};

std::string Seconds(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f s", seconds);
  return text;
}

std::string Frames(std::int64_t value) {
  char text[32];
  std::snprintf(text, sizeof text, "%" PRId64, value);
  return text;
}

std::string ResultText(int result) {
  return std::to_string(result) + " (" + DescribeResult(result) + ")";
}

Json ResultJson(int result) { return {{"code", result}, {"meaning", DescribeResult(result)}}; }

// "2: 5, 99: 1"
std::string CodeCounts(const std::map<int, int>& counts) {
  std::string text;
  for (const auto& [code, count] : counts) {
    if (!text.empty()) text += ", ";
    text += std::to_string(code) + ": " + std::to_string(count);
  }
  return text;
}

// {"2": 5, "99": 1}
Json CodeCountsJson(const std::map<int, int>& counts) {
  Json json = Json::object();
  for (const auto& [code, count] : counts) json[std::to_string(code)] = count;
  return json;
}

}  // namespace

bool IsDocumentedResult(int result) {
  return std::find(std::begin(kDocumentedResults), std::end(kDocumentedResults), result) !=
         std::end(kDocumentedResults);
}

const char* OutcomeText(CheckOutcome outcome) {
  switch (outcome) {
    case CheckOutcome::kDecoded: return "decoded";
    case CheckOutcome::kRefusedAtOpen: return "refused at open";
    case CheckOutcome::kFailedWhileReading: return "failed while reading";
    case CheckOutcome::kHung: return "hung";
  }
  return "unknown";
}

CheckOutcome FileCheck::Outcome() const {
  if (hung) return CheckOutcome::kHung;
  if (openResult != 0) return CheckOutcome::kRefusedAtOpen;
  if (readAttempted && readResult != 0) return CheckOutcome::kFailedWhileReading;
  return CheckOutcome::kDecoded;
}

bool FileCheck::ResultsDocumented() const {
  return IsDocumentedResult(openResult) && (!readAttempted || IsDocumentedResult(readResult));
}

std::string CheckLineText(const FileCheck& check) {
  std::string line = check.path + ": " + OutcomeText(check.Outcome());
  if (check.hung) {
    return line + ": still running after " + Seconds(check.seconds) + ", " + Frames(check.framesRead) +
           " frames read";
  }
  line += ": open " + ResultText(check.openResult);
  if (!check.inputProblem.empty()) line += "; " + check.inputProblem;
  if (check.openResult == 0) {
    if (check.channels == 0) {
      line += "; no audio to read";
    } else {
      line += "; " + Frames(check.framesRead) + " of " + Frames(check.durationFrames) + " frames read";
      if (check.stoppedOnZeros) line += ", stopped after a long run of zeros";
    }
    if (check.readAttempted) line += "; read " + ResultText(check.readResult);
  }
  line += "; " + Seconds(check.seconds);
  if (!check.ResultsDocumented()) line += "; RESULT OUTSIDE THE DOCUMENTED CODES";
  return line;
}

std::string CheckLineJson(const FileCheck& check) {
  Json json = {{"path", check.path}, {"outcome", OutcomeText(check.Outcome())}};
  if (!check.hung) json["open"] = ResultJson(check.openResult);
  if (!check.inputProblem.empty()) json["problem"] = check.inputProblem;
  json["channels"] = check.channels;
  json["durationFrames"] = check.durationFrames;
  json["framesRead"] = check.framesRead;
  json["read"] = check.readAttempted && !check.hung ? ResultJson(check.readResult) : Json(nullptr);
  json["stoppedOnZeros"] = check.stoppedOnZeros;
  json["documented"] = check.ResultsDocumented();
  json["seconds"] = RoundedSeconds(check.seconds, 3);
  return JsonLine(json);
}

void CheckSummary::Add(const FileCheck& check) {
  ++files_;
  if (!check.hung && !check.ResultsDocumented()) ++undocumented_;
  switch (check.Outcome()) {
    case CheckOutcome::kDecoded: ++decoded_; break;
    case CheckOutcome::kRefusedAtOpen:
      ++refusedAtOpen_;
      ++refusedByCode_[check.openResult];
      break;
    case CheckOutcome::kFailedWhileReading:
      ++failedWhileReading_;
      ++failedByCode_[check.readResult];
      break;
    case CheckOutcome::kHung: ++hung_; break;
  }
}

std::string CheckSummary::Text() const {
  std::string text = std::to_string(files_) + (files_ == 1 ? " file: " : " files: ") + std::to_string(decoded_) +
                     " decoded, " + std::to_string(refusedAtOpen_) + " refused at open";
  if (!refusedByCode_.empty()) text += " (" + CodeCounts(refusedByCode_) + ")";
  text += ", " + std::to_string(failedWhileReading_) + " failed while reading";
  if (!failedByCode_.empty()) text += " (" + CodeCounts(failedByCode_) + ")";
  if (hung_ > 0) text += ", " + std::to_string(hung_) + " hung";
  if (undocumented_ > 0) {
    text += "; " + std::to_string(undocumented_) + " ended with a code outside 0, 2, 3, 5, 9, 33, 99";
  }
  return text;
}

std::string CheckSummary::Json() const {
  return JsonLine({{"files", files_},
                   {"decoded", decoded_},
                   {"refusedAtOpen", refusedAtOpen_},
                   {"refusedByCode", CodeCountsJson(refusedByCode_)},
                   {"failedWhileReading", failedWhileReading_},
                   {"failedByCode", CodeCountsJson(failedByCode_)},
                   {"hung", hung_},
                   {"outsideDocumentedCodes", undocumented_}});
}

bool ZeroRun::Add(std::int64_t frames, bool allZero) {
  frames_ = allZero ? frames_ + frames : 0;
  return frames_ >= limitFrames_;
}

std::uint32_t BlockFrames(std::uint32_t channels, std::uint32_t preferred, std::uint64_t maxSamples) {
  if (channels == 0) return preferred;
  const std::uint64_t fitting = std::max<std::uint64_t>(1, maxSamples / channels);
  return static_cast<std::uint32_t>(std::min<std::uint64_t>(preferred, fitting));
}

}  // namespace aurivox_tool
