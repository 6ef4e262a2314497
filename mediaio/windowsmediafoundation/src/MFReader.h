// One Media Foundation source reader opened on one media file, from its path
// or through an MFByteStream over a StreamInterface, that delivers the first
// audio stream uncompressed, one buffer a channel, and the first video stream
// as UYVY or RGB32 frames.
#pragma once

#include <guiddef.h>
#include <mfidl.h>
#include <mfreadwrite.h>
#include <mftransform.h>
#include <wrl/client.h>

#include <cstddef>
#include <cstdint>
#include <memory>

#include "PendingAudio.h"
#include "StreamInterface.h"
#include "WineSourceReaderWorkarounds.h"
#include "orxcore/String.h"
#include "orxmediatypes/AudioFormat.h"

namespace windowsmediafoundation {

// Classes of OpenStatus::statusClass.
constexpr std::int32_t kOpenStatusFine = 0;
constexpr std::int32_t kOpenStatusReaderFailed = 1;  // not created, or its set-up failed
constexpr std::int32_t kOpenStatusNoReader = 3;      // creation gave no reader to set up

// What an open reports to its caller.
struct OpenStatus {
  std::int32_t statusClass = kOpenStatusFine;
  std::int32_t hr = 0;  // S_OK
  // The localised open-error text followed by the message for hr; empty
  // when nothing failed.
  orxcore::WString message;
};

// Used by one thread at a time; Media Foundation is driven synchronously.
class MFReader {
 public:
  MFReader();
  ~MFReader();
  MFReader(const MFReader&) = delete;
  MFReader& operator=(const MFReader&) = delete;

  // Opens a file by path, or through an MFByteStream over `stream`, after
  // releasing whatever an earlier open left; resets `status` first. Sets up
  // the first audio stream when `wantAudio` and the first video stream when
  // `wantVideo`, primes the audio and rewinds. Returns hasAudio() ||
  // hasVideo(). A failure fills `status`; a file without the wanted streams
  // returns false with a fine status.
  bool OpenFromPath(const orxcore::WString& path, OpenStatus& status, bool wantVideo, bool wantAudio);
  bool OpenFromStream(const std::shared_ptr<StreamInterface>& stream, OpenStatus& status, bool wantVideo,
                      bool wantAudio);

  // Negotiates the client type for the current source audio type (PCM
  // sources get PCM; others float, else PCM), reads the client format and
  // selects the audio stream. A failure clears hasAudio().
  HRESULT SetupAudio();

  // Asks the reader to decode the first audio stream to `subtype` with the
  // source's channel count and mask, and returns the type in force.
  HRESULT ConfigureClientAudioType(const GUID& subtype, IMFMediaType** clientType);

  // Delivers up to `count` frames in the client format, continuing where the
  // last call stopped (`position` is not used): sample f of channel n goes to
  // byte f x bytesPerSample of channelBuffers[n]; null buffers are skipped.
  // On return `count` holds the frames delivered, fewer at the end of the
  // stream. False, with nothing delivered and `count` unchanged, when a
  // Media Foundation call failed, the media type changed mid-stream, no
  // audio is set up or the arguments are unusable.
  bool ReadAudioSamples(std::int64_t position, std::int32_t& count, float* const* channelBuffers,
                        std::uint32_t bytesPerSample);

  // Moves the reader to `position` (100-ns units); the source decides how
  // close it lands. Pending audio and the counters are kept.
  HRESULT Seek(std::int64_t position);

  // The duration in sample frames at the client rate; 0 when unknown.
  std::int64_t GetEstimatedAudioSampleCount();

  // Asks whether the source seeks quickly; sets canSeek().
  HRESULT CanSeek();

  // Video ---------------------------------------------------------------------
  // Whether the next video set-up asks for RGB32 only, instead of UYVY first
  // and RGB32 second. Kept across opens; takes effect at the next open or
  // SetupVideo().
  void SetDeliverRgbOnly(bool rgbOnly) { rgbOnly_ = rgbOnly; }
  bool deliverRgbOnly() const { return rgbOnly_; }

  // Negotiates the client video type (UYVY or RGB32) for the current video
  // type, then runs SetupResizer(). A failure clears hasVideo().
  HRESULT SetupVideo();

  // Creates the video processing transform, which converts the decoded
  // frames when the source reader cannot deliver the client format itself;
  // reads the client frame rate and pixel aspect ratio, asks CanSeek() and
  // selects the video stream. A transform that cannot be created is traced
  // and only fails the set-up when the frames need converting.
  HRESULT SetupResizer();

  // Copies up to `count` consecutive frames, the first being frame
  // `position` (seeking when it is not the next one), into `destination`:
  // frame i starts at byte i x videoFrameBytes(), its rows top-down and
  // videoFrameBytes() / frameHeight() bytes apart. RGB32 pixels have their
  // top byte inverted (Media Foundation's unused 0x00 becomes an opaque
  // 0xFF). On return `count` holds the frames copied, fewer at the end of the
  // stream; on a failure nothing more is copied and `count` holds the frames
  // copied before it.
  HRESULT ReadVideoFrames(std::int64_t position, std::int32_t& count, std::uint8_t* destination,
                          std::size_t destinationSize);

  // The duration in frames at the frame rate; 0 when unknown.
  std::int64_t GetEstimatedVideoFrameCount();

  // Readable name of the video encoding with its frame size and rate.
  orxcore::WString GetVideoFormatDescription() const;

  std::uint32_t frameWidth() const { return static_cast<std::uint32_t>(frameSize_ >> 32); }
  std::uint32_t frameHeight() const { return static_cast<std::uint32_t>(frameSize_); }
  std::uint32_t frameRateNumerator() const { return static_cast<std::uint32_t>(frameRate_ >> 32); }
  std::uint32_t frameRateDenominator() const { return static_cast<std::uint32_t>(frameRate_); }
  // Numerator / denominator; 0 without a denominator.
  double frameRate() const;
  std::int64_t frameDuration() const { return frameDuration_; }
  std::uint32_t pixelAspectNumerator() const { return static_cast<std::uint32_t>(pixelAspectRatio_ >> 32); }
  std::uint32_t pixelAspectDenominator() const { return static_cast<std::uint32_t>(pixelAspectRatio_); }
  double pixelAspectRatio() const;
  // MFVideoFormat_UYVY or MFVideoFormat_RGB32 once set up, else GUID_NULL.
  const GUID& clientVideoSubtype() const { return clientVideoSubtype_; }
  // Bytes of one frame as ReadVideoFrames() lays it out; 0 without video.
  std::uint32_t videoFrameBytes() const;
  bool hasResizer() const { return resizer_ != nullptr; }
  // The transform converts the frames (the source reader could not).
  bool convertsVideo() const { return convertsVideo_; }

  // The source's own audio encoding (MF_MT_SUBTYPE), GUID_NULL without one.
  GUID GetSubAudioFormatType() const;
  // Readable name of the source's audio encoding.
  orxcore::WString GetAudioFormatDescription() const;

  bool hasAudio() const { return hasAudio_; }
  bool hasVideo() const { return hasVideo_; }
  std::uint32_t channels() const { return channels_; }
  std::uint32_t channelMask() const { return channelMask_; }
  std::uint32_t samplesPerSecond() const { return samplesPerSecond_; }
  std::uint32_t bitsPerSample() const { return bitsPerSample_; }
  std::uint32_t avgBytesPerSecond() const { return avgBytesPerSecond_; }
  bool endOfStream() const { return endOfStream_; }
  std::int64_t samplesDelivered() const { return samplesDelivered_; }
  bool canSeek() const { return canSeek_; }
  // A fresh layout for channelMask() and channels().
  orxmediatypes::AudioChannelLayout channelLayout() const;

 private:
  void ReleaseAll();
  void ReleaseReader();
  bool FinishOpen(HRESULT created, OpenStatus& status, bool wantVideo, bool wantAudio);
  bool SetUpStreams(OpenStatus& status, bool wantVideo, bool wantAudio);
  void PrimeAudio();
  HRESULT SetupAudioStream();
  HRESULT NegotiateClientAudioType(const GUID& sourceSubtype);
  HRESULT ReadClientAudioFormat();
  // Hands the sample's frames to `request` where it is given, keeping the
  // rest in pending audio.
  HRESULT TakeSampleData(IMFSample* sample, AudioRequest* request);
  bool ReadVideoGeometry();
  HRESULT SetupVideoStream();
  void NegotiateReaderVideoType();
  HRESULT ConfigureVideoConversion();
  HRESULT SetupResizerStream();
  HRESULT ReadClientVideoFormat();
  HRESULT SeekToFrame(std::int64_t position);
  HRESULT ReadNextVideoFrame(std::int64_t firstWanted, Microsoft::WRL::ComPtr<IMFSample>& frame, bool& ended);
  HRESULT AdoptVideoTypeChange();
  std::int64_t FrameIndexAt(LONGLONG time) const;

  Microsoft::WRL::ComPtr<IMFSourceReader> reader_;
  Microsoft::WRL::ComPtr<IMFByteStream> byteStream_;
  bool hasAudio_ = false;
  bool hasVideo_ = false;
  Microsoft::WRL::ComPtr<IMFMediaType> sourceAudioType_;
  Microsoft::WRL::ComPtr<IMFMediaType> clientAudioType_;
  std::uint32_t channels_ = 0;
  std::uint32_t channelMask_ = 0;
  std::uint32_t samplesPerSecond_ = 0;
  std::uint32_t bitsPerSample_ = 0;
  std::uint32_t avgBytesPerSecond_ = 0;
  bool endOfStream_ = false;
  std::int64_t samplesDelivered_ = 0;
  PendingAudio pendingAudio_;
  // Whether a seek's restart is still under way when the reader is released.
  SourceRestartGuard restartGuard_;

  // Video path state.
  Microsoft::WRL::ComPtr<IMFMediaType> videoType_;
  std::uint64_t frameSize_ = 0;  // width << 32 | height
  std::uint64_t frameRate_ = 0;  // numerator << 32 | denominator
  std::int64_t frameDuration_ = 0;
  bool canSeek_ = false;
  Microsoft::WRL::ComPtr<IMFMediaType> clientVideoType_;
  GUID clientVideoSubtype_ = GUID_NULL;
  bool rgbOnly_ = false;
  std::uint64_t pixelAspectRatio_ = 0;  // numerator << 32 | denominator
  Microsoft::WRL::ComPtr<IMFTransform> resizer_;
  bool convertsVideo_ = false;
  std::int64_t nextVideoFrame_ = 0;  // the frame that the next read delivers
};

}  // namespace windowsmediafoundation
