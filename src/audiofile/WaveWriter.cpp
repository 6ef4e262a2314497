#include "WaveWriter.h"

#include <limits>

#include "ByteWriter.h"

namespace audiofile {
namespace {

constexpr std::uint32_t kDs64BodySize = 28;  // RIFF size, data size, sample count, table length 0

}  // namespace

std::vector<std::uint8_t> MakeWaveHeader(const WaveFormat& format, std::uint64_t dataBytes) {
  const std::vector<std::uint8_t> fmt = format.Serialize();
  const std::uint64_t padded = dataBytes + (dataBytes & 1);
  const std::uint64_t riffBytes = 4 + (8 + kDs64BodySize) + (8 + fmt.size()) + 8 + padded;
  const bool large = riffBytes > std::numeric_limits<std::uint32_t>::max();
  const std::uint32_t kUnknown = 0xFFFFFFFF;  // the size stands in ds64

  ByteWriter out;
  out.Tag(large ? "RF64" : "RIFF");
  out.U32(large ? kUnknown : static_cast<std::uint32_t>(riffBytes));
  out.Tag("WAVE");
  if (large) {
    out.Tag("ds64");
    out.U32(kDs64BodySize);
    out.U64(riffBytes);
    out.U64(dataBytes);
    out.U64(format.blockAlign ? dataBytes / format.blockAlign : 0);
    out.U32(0);
  } else {
    out.Tag("JUNK");
    out.U32(kDs64BodySize);
    const std::uint8_t zeros[kDs64BodySize] = {};
    out.Bytes(zeros, sizeof zeros);
  }
  out.Tag("fmt ");
  out.U32(static_cast<std::uint32_t>(fmt.size()));
  out.Bytes(fmt.data(), fmt.size());
  out.Tag("data");
  out.U32(large ? kUnknown : static_cast<std::uint32_t>(dataBytes));
  return out.Take();
}

WaveWriter::~WaveWriter() {
  if (!finished_) Abort();
}

bool WaveWriter::Open(const orxcore::WString& path, const WaveFormat& format) {
  if (!finished_) Abort();
  if (file_.Create(path, ZUM::kAccessWrite, 0, ZUM::kCreateAlways, ZUM::kAttributeNormal, 0) < 0) {
    return false;
  }
  path_ = path;
  format_ = format;
  dataBytes_ = 0;
  finished_ = false;
  const auto header = MakeWaveHeader(format_, 0);
  return WriteRaw(header.data(), header.size());
}

bool WaveWriter::Write(const void* data, std::size_t size) {
  if (finished_ || !WriteRaw(data, size)) return false;
  dataBytes_ += size;
  return true;
}

bool WaveWriter::WriteRaw(const void* data, std::size_t size) {
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  while (size > 0) {
    const std::uint32_t chunk = size > (1u << 30) ? (1u << 30) : static_cast<std::uint32_t>(size);
    std::uint32_t written = 0;
    if (file_.Write(bytes, chunk, written) < 0 || written != chunk) return false;
    bytes += chunk;
    size -= chunk;
  }
  return true;
}

bool WaveWriter::Finalize() {
  if (finished_) return false;
  const std::uint8_t pad = 0;
  if ((dataBytes_ & 1) != 0 && !WriteRaw(&pad, 1)) return false;
  const auto header = MakeWaveHeader(format_, dataBytes_);
  if (file_.SetFilePointer(0, ZUM::kFromBeginning) < 0 || !WriteRaw(header.data(), header.size())) {
    return false;
  }
  file_.Close();
  finished_ = true;
  return true;
}

void WaveWriter::Abort() {
  file_.Close();
  if (!path_.empty()) ZUM::File::Delete(path_);
  finished_ = true;
}

}  // namespace audiofile
