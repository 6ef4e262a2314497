// Writes a WAVE file whose length is known only at the end. The header
// reserves room for a "ds64" chunk, so a file whose data passes 4 GiB is
// turned into RF64 in place when it is finalised.
#pragma once

#include <cstdint>
#include <vector>

#include "WaveFormat.h"
#include "ZUM/File.h"

namespace audiofile {

// The header bytes for `dataBytes` of sample data: "RIFF" with a "JUNK"
// placeholder while everything fits 32-bit sizes, else "RF64" with "ds64".
// Both forms have the same length, so the data always starts at the same
// offset.
std::vector<std::uint8_t> MakeWaveHeader(const WaveFormat& format, std::uint64_t dataBytes);

class WaveWriter {
 public:
  WaveWriter() = default;
  ~WaveWriter();  // an unfinished file is removed
  WaveWriter(const WaveWriter&) = delete;
  WaveWriter& operator=(const WaveWriter&) = delete;

  // Creates (or replaces) the file and writes a provisional header.
  bool Open(const orxcore::WString& path, const WaveFormat& format);
  bool Write(const void* data, std::size_t size);
  // Pads odd data and writes the final header. False when writing failed.
  bool Finalize();
  // Closes and deletes the file (used when the work failed).
  void Abort();

  std::uint64_t dataBytes() const { return dataBytes_; }

 private:
  bool WriteRaw(const void* data, std::size_t size);

  ZUM::File file_;
  orxcore::WString path_;
  WaveFormat format_;
  std::uint64_t dataBytes_ = 0;
  bool finished_ = true;
};

}  // namespace audiofile
