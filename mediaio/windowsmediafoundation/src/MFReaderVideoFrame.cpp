#include "MFReaderVideoFrame.h"

#include <mfapi.h>
#include <mferror.h>
#include <wrl/client.h>

#include <cstdlib>

#include "XorConstant.h"
#include "orxaccelerate/Utility.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

// Media Foundation delivers X8R8G8B8 with the unused byte at 0x00; inverted,
// it reads as an opaque alpha.
constexpr std::uint32_t kAlphaInversion = 0xFF000000u;

// Frames stay below 2 GB so that every offset fits a signed 32-bit value.
constexpr std::uint64_t kMaxFrameBytes = 0x7FFFFFFFu;

std::uint32_t BytesPerPixel(const GUID& subtype) {
  if (IsEqualGUID(subtype, MFVideoFormat_RGB32)) return 4;
  if (IsEqualGUID(subtype, MFVideoFormat_UYVY)) return 2;
  return 0;
}

std::int64_t Magnitude(std::int64_t value) { return value < 0 ? -value : value; }

// MF_MT_DEFAULT_STRIDE holds a signed value in a UINT32; without it, the
// format's own default, which is bottom-up for RGB.
std::int64_t SourceStride(IMFMediaType* client, const GUID& subtype, std::uint32_t width,
                          std::uint32_t rowBytes) {
  UINT32 stored = 0;
  if (SUCCEEDED(client->GetUINT32(MF_MT_DEFAULT_STRIDE, &stored))) return static_cast<INT32>(stored);
  LONG stride = 0;
  if (SUCCEEDED(MFGetStrideForBitmapInfoHeader(subtype.Data1, width, &stride))) return stride;
  return rowBytes;
}

HRESULT Copy2D(IMF2DBuffer* buffer, const VideoFrameLayout& layout, std::uint8_t* destination) {
  BYTE* top = nullptr;
  LONG pitch = 0;
  HRESULT hr = buffer->Lock2D(&top, &pitch);
  if (FAILED(hr)) return hr;
  if (Magnitude(pitch) < layout.rowBytes) {
    hr = MF_E_INVALIDMEDIATYPE;
  } else {
    CopyFrameRows(top, pitch, layout, destination);
  }
  const HRESULT unlocked = buffer->Unlock2D();
  return FAILED(hr) ? hr : unlocked;
}

HRESULT CopyContiguous(IMFMediaBuffer* buffer, const VideoFrameLayout& layout, std::uint8_t* destination) {
  BYTE* data = nullptr;
  DWORD length = 0;
  HRESULT hr = buffer->Lock(&data, nullptr, &length);
  if (FAILED(hr)) return hr;
  const std::int64_t distance = Magnitude(layout.sourceStride);
  const std::int64_t needed = distance * (layout.height - 1) + layout.rowBytes;
  if (static_cast<std::int64_t>(length) < needed) {
    hr = MF_E_BUFFERTOOSMALL;
  } else {
    const BYTE* top = layout.sourceStride < 0 ? data + distance * (layout.height - 1) : data;
    CopyFrameRows(top, layout.sourceStride, layout, destination);
  }
  const HRESULT unlocked = buffer->Unlock();
  return FAILED(hr) ? hr : unlocked;
}

}  // namespace

bool DescribeVideoFrame(IMFMediaType* client, std::uint32_t width, std::uint32_t height,
                        VideoFrameLayout& layout) {
  if (!client || width == 0 || height == 0) return false;
  GUID subtype = GUID_NULL;
  if (FAILED(client->GetGUID(MF_MT_SUBTYPE, &subtype))) return false;
  const std::uint32_t bytesPerPixel = BytesPerPixel(subtype);
  if (bytesPerPixel == 0) return false;
  const std::uint64_t rowBytes = std::uint64_t{width} * bytesPerPixel;
  // Rows are padded to 4 bytes at most, so this bounds the image size too.
  if (rowBytes > kMaxFrameBytes || (rowBytes + 3) * height > kMaxFrameBytes) return false;
  UINT32 frameBytes = 0;
  if (FAILED(MFCalculateImageSize(subtype, width, height, &frameBytes))) return false;
  const std::uint32_t pitch = frameBytes / height;
  if (pitch < rowBytes) return false;
  const std::int64_t stride = SourceStride(client, subtype, width, static_cast<std::uint32_t>(rowBytes));
  const auto distance = static_cast<std::uint64_t>(Magnitude(stride));
  if (distance < rowBytes || distance * height > kMaxFrameBytes) return false;
  layout.width = width;
  layout.height = height;
  layout.rowBytes = static_cast<std::uint32_t>(rowBytes);
  layout.pitch = pitch;
  layout.frameBytes = pitch * height;
  layout.sourceStride = static_cast<std::int32_t>(stride);
  layout.opaqueRgb = bytesPerPixel == 4;
  return true;
}

void CopyFrameRows(const std::uint8_t* top, std::ptrdiff_t sourcePitch, const VideoFrameLayout& layout,
                   std::uint8_t* destination) {
  for (std::uint32_t y = 0; y < layout.height; ++y) {
    const std::uint8_t* source = top + static_cast<std::ptrdiff_t>(y) * sourcePitch;
    std::uint8_t* row = destination + static_cast<std::size_t>(y) * layout.pitch;
    orxaccelerate::utility::Copy(layout.rowBytes, source, row);
    if (layout.opaqueRgb) {
      vectorkernels::XorConstantInPlace32(kAlphaInversion, reinterpret_cast<std::uint32_t*>(row),
                                          static_cast<std::int32_t>(layout.width));
    }
  }
}

HRESULT CopyVideoSample(IMFSample* sample, const VideoFrameLayout& layout, std::uint8_t* destination) {
  ComPtr<IMFMediaBuffer> buffer;
  const HRESULT hr = sample->ConvertToContiguousBuffer(&buffer);
  if (FAILED(hr)) return hr;
  ComPtr<IMF2DBuffer> buffer2D;
  if (SUCCEEDED(buffer.As(&buffer2D))) return Copy2D(buffer2D.Get(), layout, destination);
  return CopyContiguous(buffer.Get(), layout, destination);
}

}  // namespace windowsmediafoundation
