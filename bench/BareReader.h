// The reference for the decoder's overhead: a bare Media Foundation source
// reader loop that decodes a file's first audio stream, in the client type
// the decoder asks for, and copies each buffer out once.
#pragma once

#include <guiddef.h>
#include <mfidl.h>
#include <mfreadwrite.h>
#include <wrl/client.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Reads `path` in `subtype` (MFAudioFormat_Float or MFAudioFormat_PCM) with
// the source's channel count and mask.
class BareReader {
 public:
  BareReader(const std::wstring& path, const GUID& subtype);

  bool failed() const { return failed_; }
  bool done() const { return failed_ || ended_; }
  std::int64_t bytes() const { return bytes_; }
  // Reads buffers until `bytes` more were delivered or the stream ends;
  // false when a call failed.
  bool Read(std::int64_t bytes);

 private:
  Microsoft::WRL::ComPtr<IMFSourceReader> reader_;
  std::vector<std::uint8_t> copy_;
  std::int64_t bytes_ = 0;
  bool failed_ = false;
  bool ended_ = false;
};

// The bytes of a whole decode; -1 when a call failed.
std::int64_t DecodeWithBareReader(const std::wstring& path, const GUID& subtype);

}  // namespace bench
