// How MFReader lays out a video frame in the caller's buffer, and the copy of
// one decoded frame from Media Foundation's buffer into it.
#pragma once

#include <mfobjects.h>

#include <cstddef>
#include <cstdint>

namespace windowsmediafoundation {

struct VideoFrameLayout {
  std::uint32_t width = 0;       // pixels in a row
  std::uint32_t height = 0;      // rows
  std::uint32_t rowBytes = 0;    // bytes of the pixels of one row
  std::uint32_t pitch = 0;       // distance of the caller's rows, at least rowBytes
  std::uint32_t frameBytes = 0;  // pitch x height
  // Distance of the rows in a buffer without 2D access; negative when the
  // bottom row comes first.
  std::int32_t sourceStride = 0;
  // RGB32: the top byte of each copied pixel is inverted.
  bool opaqueRgb = false;
};

// The layout of `width` x `height` frames of `client` (UYVY or RGB32):
// frameBytes from MFCalculateImageSize, sourceStride from MF_MT_DEFAULT_STRIDE
// or else the format's default. False for other formats, empty sizes, strides
// shorter than a row and frames of 2 GB or more.
bool DescribeVideoFrame(IMFMediaType* client, std::uint32_t width, std::uint32_t height, VideoFrameLayout& layout);

// Copies layout.height rows of layout.rowBytes, the top one at `top` and each
// next one `sourcePitch` bytes further on, to rows layout.pitch apart at
// `destination`, and inverts the top byte of every RGB32 pixel copied.
void CopyFrameRows(const std::uint8_t* top, std::ptrdiff_t sourcePitch, const VideoFrameLayout& layout,
                   std::uint8_t* destination);

// Copies the frame that `sample` holds to `destination` (layout.frameBytes
// bytes), through IMF2DBuffer when its buffer offers it and by
// layout.sourceStride otherwise. MF_E_BUFFERTOOSMALL when the buffer is too
// short for the rows, MF_E_INVALIDMEDIATYPE when its pitch is.
HRESULT CopyVideoSample(IMFSample* sample, const VideoFrameLayout& layout, std::uint8_t* destination);

}  // namespace windowsmediafoundation
