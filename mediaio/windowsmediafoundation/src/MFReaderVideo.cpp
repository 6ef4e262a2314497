// MFReader: the video stream's set-up (frame geometry, client type, the video
// processing transform) and what a caller asks about the stream.
#include <mfapi.h>
#include <mferror.h>
#include <propidl.h>

#include <vector>

#include "MFErrorMessage.h"
#include "MFFormatDescription.h"
#include "MFReader.h"
#include "MFReaderVideoFrame.h"
#include "MFReaderVideoTransform.h"
#include "TimeArithmetic.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

orxcore::TraceSite g_setupVideoError("windowsmediafoundation.MFReader.SetupVideo", 5);
orxcore::TraceSite g_setupResizerError("windowsmediafoundation.MFReader.SetupResizer", 5);
orxcore::TraceSite g_estimateFramesError("windowsmediafoundation.MFReader.GetEstimatedVideoFrameCount", 5);

constexpr std::uint64_t kSquarePixels = (std::uint64_t{1} << 32) | 1;

// A pair attribute (high and low 32 bits) whose halves are both non-zero.
bool ReadNonZeroPair(IMFAttributes* type, REFGUID key, std::uint64_t& pair) {
  UINT64 value = 0;
  if (FAILED(type->GetUINT64(key, &value))) return false;
  if ((value >> 32) == 0 || (value & 0xFFFFFFFFu) == 0) return false;
  pair = value;
  return true;
}

double Quotient(std::uint64_t pair) {
  const auto denominator = static_cast<std::uint32_t>(pair);
  if (denominator == 0) return 0.0;
  return static_cast<double>(pair >> 32) / denominator;
}

std::vector<GUID> WantedVideoSubtypes(bool rgbOnly) {
  if (rgbOnly) return {MFVideoFormat_RGB32};
  return {MFVideoFormat_UYVY, MFVideoFormat_RGB32};
}

// Asks the reader to deliver the first video stream as `subtype`.
HRESULT SetReaderVideoType(IMFSourceReader* reader, const GUID& subtype) {
  ComPtr<IMFMediaType> proposed;
  HRESULT hr = MFCreateMediaType(&proposed);
  if (FAILED(hr)) return hr;
  hr = proposed->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video);
  if (FAILED(hr)) return hr;
  hr = proposed->SetGUID(MF_MT_SUBTYPE, subtype);
  if (FAILED(hr)) return hr;
  return reader->SetCurrentMediaType(MF_SOURCE_READER_FIRST_VIDEO_STREAM, nullptr, proposed.Get());
}

bool IsOneOf(IMFMediaType* type, const std::vector<GUID>& subtypes) {
  GUID subtype = GUID_NULL;
  if (FAILED(type->GetGUID(MF_MT_SUBTYPE, &subtype))) return false;
  for (const GUID& candidate : subtypes) {
    if (IsEqualGUID(candidate, subtype)) return true;
  }
  return false;
}

}  // namespace

bool MFReader::ReadVideoGeometry() {
  std::uint64_t size = 0;
  std::uint64_t rate = 0;
  if (!ReadNonZeroPair(videoType_.Get(), MF_MT_FRAME_SIZE, size)) return false;
  if (!ReadNonZeroPair(videoType_.Get(), MF_MT_FRAME_RATE, rate)) return false;
  frameSize_ = size;
  frameRate_ = rate;
  frameDuration_ = FramesPerRatio(1, frameRateNumerator(), frameRateDenominator());
  return true;
}

HRESULT MFReader::SetupVideo() {
  const HRESULT hr = SetupVideoStream();
  if (FAILED(hr)) {
    TraceMFError(g_setupVideoError, hr);
    hasVideo_ = false;
  }
  return hr;
}

HRESULT MFReader::SetupVideoStream() {
  if (!reader_ || !videoType_) return E_POINTER;
  GUID subtype = GUID_NULL;
  const HRESULT hr = videoType_->GetGUID(MF_MT_SUBTYPE, &subtype);
  if (FAILED(hr)) return hr;
  clientVideoSubtype_ = GUID_NULL;
  // A reader that cannot deliver the client format leaves the conversion to
  // the transform that SetupResizer creates.
  NegotiateReaderVideoType();
  return SetupResizer();
}

void MFReader::NegotiateReaderVideoType() {
  for (const GUID& subtype : WantedVideoSubtypes(rgbOnly_)) {
    if (SUCCEEDED(SetReaderVideoType(reader_.Get(), subtype))) return;
  }
}

HRESULT MFReader::SetupResizer() {
  const HRESULT hr = SetupResizerStream();
  if (FAILED(hr)) TraceMFError(g_setupResizerError, hr);
  return hr;
}

HRESULT MFReader::SetupResizerStream() {
  if (!reader_ || !videoType_) return E_POINTER;
  resizer_.Reset();
  convertsVideo_ = false;
  clientVideoType_.Reset();
  const HRESULT created = CreateVideoProcessor(resizer_);
  ComPtr<IMFMediaType> delivered;
  HRESULT hr = reader_->GetCurrentMediaType(MF_SOURCE_READER_FIRST_VIDEO_STREAM, &delivered);
  if (FAILED(hr)) return hr;
  if (IsOneOf(delivered.Get(), WantedVideoSubtypes(rgbOnly_))) {
    clientVideoType_ = delivered;
    // The reader converts by itself; the transform is not needed for that.
    if (FAILED(created)) TraceMFError(g_setupResizerError, created);
  } else {
    if (FAILED(created)) return created;
    hr = ConfigureVideoConversion();
    if (FAILED(hr)) return hr;
    convertsVideo_ = true;
  }
  hr = ReadClientVideoFormat();
  if (FAILED(hr)) return hr;
  CanSeek();
  // Where the reader stands is known again after the next seek.
  nextVideoFrame_ = -1;
  return reader_->SetStreamSelection(MF_SOURCE_READER_FIRST_VIDEO_STREAM, TRUE);
}

HRESULT MFReader::ConfigureVideoConversion() {
  ComPtr<IMFMediaType> decoded;
  HRESULT hr = reader_->GetCurrentMediaType(MF_SOURCE_READER_FIRST_VIDEO_STREAM, &decoded);
  if (FAILED(hr)) return hr;
  return ConfigureConversion(resizer_.Get(), decoded.Get(), WantedVideoSubtypes(rgbOnly_), clientVideoType_);
}

HRESULT MFReader::ReadClientVideoFormat() {
  GUID subtype = GUID_NULL;
  const HRESULT hr = clientVideoType_->GetGUID(MF_MT_SUBTYPE, &subtype);
  if (FAILED(hr)) return hr;
  // Only the formats that were asked for can be copied out.
  if (!IsEqualGUID(subtype, MFVideoFormat_UYVY) && !IsEqualGUID(subtype, MFVideoFormat_RGB32)) {
    return MF_E_INVALIDMEDIATYPE;
  }
  clientVideoSubtype_ = subtype;
  std::uint64_t rate = 0;
  if (ReadNonZeroPair(clientVideoType_.Get(), MF_MT_FRAME_RATE, rate)) {
    frameRate_ = rate;
    frameDuration_ = FramesPerRatio(1, frameRateNumerator(), frameRateDenominator());
  }
  std::uint64_t aspect = 0;
  pixelAspectRatio_ = ReadNonZeroPair(clientVideoType_.Get(), MF_MT_PIXEL_ASPECT_RATIO, aspect) ? aspect
                                                                                                 : kSquarePixels;
  return hr;
}

std::int64_t MFReader::GetEstimatedVideoFrameCount() {
  if (!reader_ || !hasVideo_) return 0;
  PROPVARIANT duration;
  PropVariantInit(&duration);
  const HRESULT hr = reader_->GetPresentationAttribute(MF_SOURCE_READER_MEDIASOURCE, MF_PD_DURATION, &duration);
  if (FAILED(hr)) {
    TraceMFError(g_estimateFramesError, hr);
    return 0;
  }
  std::int64_t time = 0;
  if (duration.vt == VT_UI8) time = static_cast<std::int64_t>(duration.uhVal.QuadPart);
  PropVariantClear(&duration);
  if (time <= 0) return 0;
  return TimeToFrames(time, frameRateNumerator(), frameRateDenominator());
}

orxcore::WString MFReader::GetVideoFormatDescription() const {
  return DescribeVideoFormat(videoType_.Get(), frameWidth(), frameHeight(), frameRateNumerator(),
                             frameRateDenominator());
}

double MFReader::frameRate() const { return Quotient(frameRate_); }

double MFReader::pixelAspectRatio() const { return Quotient(pixelAspectRatio_); }

std::uint32_t MFReader::videoFrameBytes() const {
  VideoFrameLayout layout;
  if (!hasVideo_ || !DescribeVideoFrame(clientVideoType_.Get(), frameWidth(), frameHeight(), layout)) return 0;
  return layout.frameBytes;
}

}  // namespace windowsmediafoundation
