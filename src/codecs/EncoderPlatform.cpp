// The platform half of the encoder. This build has no platform encoder:
// every operation that would encode fails and nothing is reported supported.
// A platform encoder replaces this file.
#include "aurivox/Encoder.h"

namespace Aurivox {

bool Encoder::Initialize(const orxcore::WString& /*path*/, std::int32_t, std::int32_t, std::int32_t,
                         std::int32_t, std::int32_t, std::int32_t, std::int32_t) {
  return false;
}

bool Encoder::WriteSampleBytes(const std::uint8_t* /*data*/, std::uint32_t /*size*/) { return false; }

bool Encoder::FinishWrite() { return false; }

std::vector<std::int32_t> Encoder::GetSupportedBitRates(std::int32_t, std::int32_t, std::int32_t,
                                                        std::int32_t) {
  return {};
}

std::vector<orxmediatypes::AudioChannelDescription> Encoder::GetSupportedChannelLayout(std::int32_t,
                                                                                       std::int32_t) {
  return {};
}

std::vector<std::int32_t> Encoder::GetSupportedSampleRates(std::int32_t) { return {}; }

std::set<std::string> Encoder::GetSupportedExtensions(std::int32_t) { return {}; }

}  // namespace Aurivox
