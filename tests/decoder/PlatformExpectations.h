// Where the two platform halves differ in what a user sees, as data for the
// decoder's end-to-end tests.
#pragma once

namespace aurivox_test {

#ifdef _WIN32
// Wine's media sources describe compressed audio by its decoded type (an
// MP3 file shows 16-bit PCM, AAC float), cannot demultiplex MPEG transport
// streams, and decode AAC a little differently from run to run.
constexpr bool kReportsTheFilesOwnCodec = false;
constexpr bool kReadsTransportStreams = false;
constexpr float kRepeatedLossyDecodeTolerance = 0.05f;
#else
constexpr bool kReportsTheFilesOwnCodec = true;
constexpr bool kReadsTransportStreams = true;
constexpr float kRepeatedLossyDecodeTolerance = 0.0f;
#endif

}  // namespace aurivox_test
