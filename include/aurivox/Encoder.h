// The exported audio encoder. It encodes through a temporary file whose new
// bytes GetEncodedBuffer hands back after each write. This build has no
// platform encoder: the platform operations fail and the capability queries
// report nothing supported.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "ZUM/File.h"
#include "aurivox/Export.h"
#include "orxcore/String.h"
#include "orxmediatypes/AudioFormat.h"

namespace Aurivox {

class AURIVOX_API Encoder {
 public:
  Encoder();
  ~Encoder();
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;

  // `format` selects the output format (as GetSupportedExtensions takes it);
  // the other six values are passed on to the platform encoder.
  bool Initialize(std::int32_t format, std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d,
                  std::int32_t e, std::int32_t f);
  bool Initialize(const orxcore::WString& path, std::int32_t format, std::int32_t a, std::int32_t b,
                  std::int32_t c, std::int32_t d, std::int32_t e, std::int32_t f);
  bool WriteSampleBytes(const std::uint8_t* data, std::uint32_t size);
  bool FinishWrite();
  // Encodes `size` bytes and returns in `out` what the encoder added to its file.
  bool GetEncodedBuffer(const std::uint8_t* data, std::uint32_t size, std::vector<std::uint8_t>& out);

  static std::vector<std::int32_t> GetSupportedBitRates(std::int32_t format, std::int32_t sampleRate,
                                                        std::int32_t channels, std::int32_t quality);
  static std::vector<orxmediatypes::AudioChannelDescription> GetSupportedChannelLayout(std::int32_t format,
                                                                                       std::int32_t channels);
  static std::vector<std::int32_t> GetSupportedSampleRates(std::int32_t format);
  static std::set<std::string> GetSupportedExtensions(std::int32_t format);

 private:
  void Terminate();
  void OS_Init();
  void OS_Terminate();
  bool MakeTemporaryPath(std::int32_t format);

  std::unique_ptr<std::uint8_t> platformState;  // the platform encoder's state
  bool initialised = false;
  ZUM::File temporaryFile;
  orxcore::WString temporaryPath;
};

}  // namespace Aurivox
