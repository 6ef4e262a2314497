// The reference for the decoder's overhead: a bare Media Foundation source
// reader loop that decodes a file's first audio stream to the end, in the
// client type the decoder asks for, and copies each buffer out once.
#pragma once

#include <guiddef.h>

#include <cstdint>
#include <string>

namespace bench {

// Bytes delivered in `subtype` (MFAudioFormat_Float or MFAudioFormat_PCM)
// with the source's channel count and mask; -1 when a call failed.
std::int64_t DecodeWithBareReader(const std::wstring& path, const GUID& subtype);

}  // namespace bench
