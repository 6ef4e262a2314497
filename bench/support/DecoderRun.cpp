#include "DecoderRun.h"

#include <algorithm>

#include "WaveFormat.h"
#include "orxmediatypes/AudioFormat.h"

namespace bench {
DecoderRun::DecoderRun(const orxcore::WString& path) : result_(decoder_.Open(path, nullptr)) {
  if (result_ != Aurivox::kResultSuccess) return;
  orxmediatypes::AudioFormat format;
  decoder_.GetAudioFormat(format);
  channels_ = format.GetChannelCount();
  width_ = audiofile::BytesPerSample(format);
  rate_ = format.GetSampleRate();
  length_ = decoder_.GetDuration();
  buffers_.assign(channels_, std::vector<float>(kBlockFrames));
  for (auto& buffer : buffers_) pointers_.push_back(buffer.data());
}

bool DecoderRun::Read(std::int64_t frames) {
  const std::int64_t end = frames >= length_ - frames_ ? length_ : frames_ + frames;
  while (frames_ < end && !done()) {
    imImportAudioRec7 request{};
    request.size = static_cast<std::uint32_t>(std::min<std::int64_t>(kBlockFrames, length_ - frames_));
    request.position = frames_;
    request.buffer = pointers_.data();
    result_ = decoder_.ReadAudio(&request);
    if (result_ == Aurivox::kResultSuccess) frames_ += request.size;
  }
  return !done();
}

}  // namespace bench
