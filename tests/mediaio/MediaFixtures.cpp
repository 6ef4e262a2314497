#include "MediaFixtures.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <tuple>

namespace aurivox_test {

static std::filesystem::path MediaFixturePath(const std::string& name) {
  const std::string path = AURIVOX_MEDIA_FIXTURES "/" + name;
#ifdef _WIN32
  // Wine maps the root of the Linux file system to drive Z:.
  return L"Z:" + std::filesystem::path(path).make_preferred().wstring();
#else
  return path;
#endif
}

orxcore::WString MediaFixtureWPath(const std::string& name) {
  const std::wstring path = MediaFixturePath(name).wstring();
  return orxcore::WString(path.begin(), path.end());
}

std::vector<std::uint8_t> ReadMediaFixture(const std::string& name) {
  std::ifstream in(MediaFixturePath(name), std::ios::binary);
  return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<float> SamplesAsFloat(const std::vector<std::uint8_t>& bytes, std::uint32_t bytesPerSample,
                                  bool isFloat) {
  std::vector<float> samples;
  for (std::size_t i = 0; bytesPerSample && i + bytesPerSample <= bytes.size(); i += bytesPerSample) {
    const std::uint8_t* sample = bytes.data() + i;
    float value;
    if (isFloat) {
      std::memcpy(&value, sample, sizeof value);
    } else {
      // Little-endian, sign taken from the top byte; 8-bit samples are unsigned.
      std::int64_t word = bytesPerSample == 1 ? sample[0] - 128 : static_cast<std::int8_t>(sample[bytesPerSample - 1]);
      for (int b = static_cast<int>(bytesPerSample) - 2; b >= 0; --b) word = word * 256 + sample[b];
      value = static_cast<float>(word / std::ldexp(1.0, 8 * static_cast<int>(bytesPerSample) - 1));
    }
    samples.push_back(value);
  }
  return samples;
}

AlignedComparison CompareAligned(const std::vector<float>& decoded, const std::vector<float>& reference,
                                 std::uint32_t channels, std::int64_t maxLag, std::size_t skipFrames) {
  AlignedComparison result;
  if (channels == 0) return result;
  const auto decodedFrames = static_cast<std::int64_t>(decoded.size() / channels);
  const std::size_t referenceFrames = reference.size() / channels;
  const std::size_t first = std::min(skipFrames, referenceFrames);
  const std::size_t end = std::min<std::size_t>(referenceFrames, first + 32768);
  double best = -1e300;
  for (std::int64_t lag = -maxLag; lag <= maxLag; ++lag) {
    double correlation = 0;
    for (std::size_t f = first; f < end; ++f) {
      const std::int64_t d = static_cast<std::int64_t>(f) + lag;
      if (d >= 0 && d < decodedFrames) correlation += double{decoded[d * channels]} * reference[f * channels];
    }
    if (correlation > best) std::tie(best, result.lag) = std::tie(correlation, lag);
  }
  double squares = 0;
  for (std::size_t f = first; f < referenceFrames; ++f) {
    const std::int64_t d = static_cast<std::int64_t>(f) + result.lag;
    if (d < 0 || d >= decodedFrames) continue;
    for (std::uint32_t n = 0; n < channels; ++n) {
      const double difference = double{decoded[d * channels + n]} - reference[f * channels + n];
      squares += difference * difference;
      result.maxDifference = std::max(result.maxDifference, std::fabs(difference));
    }
    ++result.overlapFrames;
  }
  if (result.overlapFrames) result.rmsDifference = std::sqrt(squares / (result.overlapFrames * channels));
  return result;
}

}  // namespace aurivox_test
