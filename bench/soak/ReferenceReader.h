// The Media Foundation calls that opening, reading a few blocks of and
// closing a decoder make, made directly: what the platform itself keeps
// per reader, for telling it apart from what the module keeps.
#pragma once

#include <cstdint>
#include <string>

namespace aurivox_test {

// Opens `path` by URL, or through Media Foundation's own file byte stream
// when `throughByteStream` (as a split recording is opened), sets the audio
// up as the decoder does, primes and rewinds, reads samples until they hold
// `frames` frames, and releases everything. False when a call failed.
bool OpenReadCloseReference(const std::wstring& path, bool throughByteStream, std::uint32_t frames);

}  // namespace aurivox_test
