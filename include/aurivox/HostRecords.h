// The host SDK's records, as far as the module touches them. The host lays
// them out packed; the module reads and writes only the fields named here,
// at the offsets checked below, and leaves every reserved byte alone.
#pragma once

#include <cstddef>
#include <cstdint>

// A speaker label of the host SDK: 100 to 117 for the positions, 0 for a
// discrete channel.
enum QzAudioChannelLabel : std::int32_t {
  kQzAudioChannelLabel_Discrete = 0,
  kQzAudioChannelLabel_FrontLeft = 100,
  kQzAudioChannelLabel_FrontRight = 101,
  kQzAudioChannelLabel_FrontCenter = 102,
  kQzAudioChannelLabel_LowFrequency = 103,
  kQzAudioChannelLabel_BackLeft = 104,
  kQzAudioChannelLabel_BackRight = 105,
  kQzAudioChannelLabel_BackCenter = 106,
  kQzAudioChannelLabel_FrontLeftOfCenter = 107,
  kQzAudioChannelLabel_FrontRightOfCenter = 108,
  kQzAudioChannelLabel_SideLeft = 109,
  kQzAudioChannelLabel_SideRight = 110,
  kQzAudioChannelLabel_TopCenter = 111,
  kQzAudioChannelLabel_TopFrontLeft = 112,
  kQzAudioChannelLabel_TopFrontRight = 113,
  kQzAudioChannelLabel_TopFrontCenter = 114,
  kQzAudioChannelLabel_TopBackLeft = 115,
  kQzAudioChannelLabel_TopBackRight = 116,
  kQzAudioChannelLabel_TopBackCenter = 117,
};

constexpr std::size_t kQzMaxAudioChannelLabels = 32;

#pragma pack(push, 1)

// The host's request to open a file (read only).
struct imFileOpenRec8 {
  std::uint8_t reserved0[12];
  const char16_t* filePath;  // NUL-terminated UTF-16
  std::uint8_t reserved1[12];
};

// What the module reports about an opened file.
struct imFileInfoRec8 {
  std::uint8_t reserved0[1];
  std::int8_t hasAudio;
  std::uint8_t reserved1[172];
  std::uint32_t numChannels;
  float sampleRate;
  std::int32_t sampleType;  // host sample-type code
  std::int64_t audioDuration;  // sample frames
  std::int32_t audioFlags;     // bit 0: duration is an estimate
  std::uint8_t reserved2[58];
};

// A read request: `size` frames from `position` into one buffer a channel.
struct imImportAudioRec7 {
  std::int64_t position;
  std::uint32_t size;
  float** buffer;  // a null entry: the host does not want that channel
  std::uint8_t reserved0[12];
};

// The host's request for analysis text.
struct imAnalysisRec {
  std::uint8_t reserved0[16];
  std::int32_t bufferSize;  // bytes, including the terminating NUL
  char* buffer;
  std::uint8_t reserved1[4];
};

// The host's request for channel labels.
struct imGetAudioChannelLayoutRec {
  std::uint8_t reserved0[8];
  QzAudioChannelLabel channelLabels[kQzMaxAudioChannelLabels];
};

#pragma pack(pop)

// The host's error suite; the module calls only its first entry.
struct QzSDKErrorSuite3 {
  std::int32_t (*SendErrorEvent)(std::int32_t eventType, const char16_t* title,
                                 const char16_t* message);
};

static_assert(offsetof(imFileOpenRec8, filePath) == 12, "imFileOpenRec8 layout");
static_assert(offsetof(imFileInfoRec8, hasAudio) == 1, "imFileInfoRec8 layout");
static_assert(offsetof(imFileInfoRec8, numChannels) == 174, "imFileInfoRec8 layout");
static_assert(offsetof(imFileInfoRec8, sampleRate) == 178, "imFileInfoRec8 layout");
static_assert(offsetof(imFileInfoRec8, sampleType) == 182, "imFileInfoRec8 layout");
static_assert(offsetof(imFileInfoRec8, audioDuration) == 186, "imFileInfoRec8 layout");
static_assert(offsetof(imFileInfoRec8, audioFlags) == 194, "imFileInfoRec8 layout");
static_assert(offsetof(imImportAudioRec7, position) == 0, "imImportAudioRec7 layout");
static_assert(offsetof(imImportAudioRec7, size) == 8, "imImportAudioRec7 layout");
static_assert(offsetof(imImportAudioRec7, buffer) == 12, "imImportAudioRec7 layout");
static_assert(offsetof(imAnalysisRec, bufferSize) == 16, "imAnalysisRec layout");
static_assert(offsetof(imAnalysisRec, buffer) == 20, "imAnalysisRec layout");
static_assert(offsetof(imGetAudioChannelLayoutRec, channelLabels) == 8,
              "imGetAudioChannelLayoutRec layout");
static_assert(sizeof(QzAudioChannelLabel) == 4, "labels are 32-bit");
