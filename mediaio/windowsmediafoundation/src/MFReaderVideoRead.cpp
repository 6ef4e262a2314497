// MFReader: reading video frames into the caller's buffer.
#include <mfapi.h>
#include <mferror.h>

#include <cstdint>

#include "MFErrorMessage.h"
#include "MFReader.h"
#include "MFReaderVideoFrame.h"
#include "MFReaderVideoTransform.h"
#include "TimeArithmetic.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

orxcore::TraceSite g_readVideoFramesError("windowsmediafoundation.MFReader.ReadVideoFrames", 5);

// Positions stay far enough from the end of the range for position + count.
constexpr std::int64_t kMaxFramePosition = INT64_MAX - INT32_MAX;

HRESULT CheckFrameRequest(std::int64_t position, std::int32_t count, const std::uint8_t* destination,
                          std::size_t destinationSize, std::uint32_t frameBytes) {
  if (count < 0 || position < 0 || position > kMaxFramePosition) return E_INVALIDARG;
  if (static_cast<std::uint64_t>(count) * frameBytes > destinationSize) return E_INVALIDARG;
  if (count > 0 && !destination) return E_POINTER;
  return S_OK;
}

}  // namespace

HRESULT MFReader::ReadVideoFrames(std::int64_t position, std::int32_t& count, std::uint8_t* destination,
                                  std::size_t destinationSize) {
  const std::int32_t wanted = count;
  count = 0;
  VideoFrameLayout layout;
  HRESULT hr = MF_E_INVALIDREQUEST;
  if (reader_ && hasVideo_ && DescribeVideoFrame(clientVideoType_.Get(), frameWidth(), frameHeight(), layout)) {
    hr = CheckFrameRequest(position, wanted, destination, destinationSize, layout.frameBytes);
  }
  if (FAILED(hr)) {
    // Nothing was read: the reader stays where it was.
    TraceMFError(g_readVideoFramesError, hr);
    return hr;
  }
  if (wanted > 0 && position != nextVideoFrame_) hr = SeekToFrame(position);
  while (SUCCEEDED(hr) && count < wanted) {
    ComPtr<IMFSample> frame;
    bool ended = false;
    hr = ReadNextVideoFrame(position + count, frame, ended);
    if (FAILED(hr) || ended) break;
    // A type change on the way may have moved the rows within the buffers.
    if (!DescribeVideoFrame(clientVideoType_.Get(), frameWidth(), frameHeight(), layout)) {
      hr = MF_E_INVALIDMEDIATYPE;
      break;
    }
    hr = CopyVideoSample(frame.Get(), layout, destination + static_cast<std::size_t>(count) * layout.frameBytes);
    if (SUCCEEDED(hr)) ++count;
  }
  if (FAILED(hr)) {
    TraceMFError(g_readVideoFramesError, hr);
    // Where the reader stands is unknown; the next read seeks.
    nextVideoFrame_ = -1;
    return hr;
  }
  if (wanted > 0) nextVideoFrame_ = position + count;
  return hr;
}

// The seek aims a quarter frame into the frame. Sample times are truncated
// to 100 ns, so a seek to its exact start can fall into the frame before,
// and sources that present the frame under the seek target first (with its
// time clipped to the target) would then show that one.
HRESULT MFReader::SeekToFrame(std::int64_t position) {
  const std::int64_t start = FramesPerRatio(position, frameRateNumerator(), frameRateDenominator());
  const HRESULT hr = Seek(start + frameDuration_ / 4);
  if (SUCCEEDED(hr) && convertsVideo_) FlushConversion(resizer_.Get());
  return hr;
}

// The next frame whose index is `firstWanted` or later: a seek lands on the
// key frame before its target, and the frames up to the target are dropped.
HRESULT MFReader::ReadNextVideoFrame(std::int64_t firstWanted, ComPtr<IMFSample>& frame, bool& ended) {
  for (;;) {
    DWORD flags = 0;
    LONGLONG time = 0;
    ComPtr<IMFSample> decoded;
    HRESULT hr = reader_->ReadSample(MF_SOURCE_READER_FIRST_VIDEO_STREAM, 0, nullptr, &flags, &time, &decoded);
    restartGuard_.NoteRead();
    if (FAILED(hr)) return hr;
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) {
      hr = convertsVideo_ ? DrainFrame(resizer_.Get(), frame) : S_FALSE;
      if (FAILED(hr)) return hr;
      if (hr == S_FALSE) {
        ended = true;
        return S_OK;
      }
    } else {
      if (flags & MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED) {
        hr = AdoptVideoTypeChange();
        if (FAILED(hr)) return hr;
      }
      if (!decoded) continue;  // a stream tick or a gap
      if (convertsVideo_) {
        hr = ConvertFrame(resizer_.Get(), decoded.Get(), frame);
        if (FAILED(hr)) return hr;
        if (hr == S_FALSE) continue;
      } else {
        frame = decoded;
      }
    }
    LONGLONG frameTime = 0;
    if (FAILED(frame->GetSampleTime(&frameTime))) frameTime = time;
    if (FrameIndexAt(frameTime) >= firstWanted) return S_OK;
    frame.Reset();
  }
}

// Decoders often settle on their buffer layout once they see the first
// frame. A new stride is taken on; a new format or frame size would not fit
// the caller's buffer.
HRESULT MFReader::AdoptVideoTypeChange() {
  const HRESULT hr = convertsVideo_ ? ConfigureVideoConversion()
                                    : reader_->GetCurrentMediaType(MF_SOURCE_READER_FIRST_VIDEO_STREAM,
                                                                   clientVideoType_.ReleaseAndGetAddressOf());
  if (FAILED(hr)) return hr;
  GUID subtype = GUID_NULL;
  UINT64 size = 0;
  if (FAILED(clientVideoType_->GetGUID(MF_MT_SUBTYPE, &subtype)) || !IsEqualGUID(subtype, clientVideoSubtype_)) {
    return MF_E_INVALIDMEDIATYPE;
  }
  if (SUCCEEDED(clientVideoType_->GetUINT64(MF_MT_FRAME_SIZE, &size)) && size != frameSize_) {
    return MF_E_INVALIDMEDIATYPE;
  }
  return hr;
}

// Rounded to the nearest frame, since sample times are rounded to 100 ns.
std::int64_t MFReader::FrameIndexAt(LONGLONG time) const {
  return TimeToFrames(time + frameDuration_ / 2, frameRateNumerator(), frameRateDenominator());
}

}  // namespace windowsmediafoundation
