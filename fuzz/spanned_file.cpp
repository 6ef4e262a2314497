// Operation sequences on a SpannedFile and on a SpannedFileStreamWrapper over
// the same segment files, checked against a model of the joined bytes. Segment
// files are deleted and written again between operations now and then.
//
// Input: a segment count (byte % 6); per segment a size kind byte (kind % 3:
// 0 empty, 1 kind / 3 % 17 bytes, 2 a U16 % 4097 bytes); a content seed byte;
// a byte whose bit 0 opens the wrapper as soon as it is made; then operations, each an
// opcode byte (% kOperationCount) and its fields, read as Step() reads them.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "FuzzSupport.h"
#include "OpenFileCounter.h"
#include "SpannedFile.h"
#include "SpannedFileStreamWrapper.h"

namespace {

namespace fs = std::filesystem;
using Aurivox::SpannedFile;
using Aurivox::SpannedFileStreamWrapper;
using aurivox_fuzz::ByteReader;
using Bytes = std::vector<std::uint8_t>;

// Enough for a file and a wrapper to be opened, read, rebuilt and closed
// several times over; longer runs mostly repeat reads and cost rate.
constexpr int kMaxOperations = 32;
constexpr std::size_t kGuardBytes = 16;
constexpr std::uint8_t kUntouched = 0xA5;

// The segment files on disk. Storage is made once, for the largest input, and
// reused: libFuzzer runs an input a second time, looking for a leak, whenever
// it allocated more than it freed. A file that already holds an input's bytes
// is not written again: most inputs differ from the last one in a few bytes.
class Segments {
 public:
  static constexpr std::size_t kMaxCount = 5;
  static constexpr std::size_t kMaxBytes = 4096;

  explicit Segments(const fs::path& folder) {
    fs::create_directories(folder);
    std::vector<orxcore::WString> widePaths;
    for (std::size_t i = 0; i < kMaxCount; ++i) {
      widePathsOfCount_[i] = widePaths;
      char name[16];
      std::snprintf(name, sizeof name, "%05zu.m2ts", i + 1);
      paths_[i] = folder / name;
      aurivox_fuzz::OpenFileCounter::Track(paths_[i]);
      widePaths.push_back(aurivox_fuzz::ToWString(paths_[i]));
      contents_[i].reserve(kMaxBytes);
      onDisk_[i].reserve(kMaxBytes);
    }
    widePathsOfCount_[kMaxCount] = widePaths;
  }

  // Takes the segment count, sizes and content seed from the input (see the
  // layout at the top) and puts the files on disk.
  void Reset(ByteReader& input) {
    count_ = input.Below(kMaxCount + 1);
    for (std::size_t i = 0; i < count_; ++i) {
      const unsigned kind = input.Byte();
      contents_[i].resize(kind % 3 == 0 ? 0 : kind % 3 == 1 ? kind / 3 % 17 : input.U16() % (kMaxBytes + 1));
    }
    // Bytes that differ along the joined stream, so that a read from the
    // wrong place shows.
    std::uint32_t state = 0x9E3779B9u ^ input.Byte();
    for (std::size_t i = 0; i < count_; ++i) {
      for (std::uint8_t& byte : contents_[i]) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<std::uint8_t>(state >> 24);
      }
      if (!present_[i] || onDisk_[i] != contents_[i]) Write(i);
    }
  }

  void Write(std::size_t i) {
    aurivox_fuzz::WriteFile(paths_[i], contents_[i].data(), contents_[i].size());
    onDisk_[i].assign(contents_[i].begin(), contents_[i].end());
    present_[i] = true;
  }

  void Delete(std::size_t i) {
    std::error_code ignored;
    fs::remove(paths_[i], ignored);
    present_[i] = false;
  }

  std::size_t count() const { return count_; }
  bool present(std::size_t i) const { return present_[i]; }
  const Bytes& content(std::size_t i) const { return contents_[i]; }
  const std::vector<orxcore::WString>& widePaths() const { return widePathsOfCount_[count_]; }
  // Descriptors open on segment files, deleted ones included.
  static int OpenFileCount() { return aurivox_fuzz::OpenFileCounter::Count(); }

 private:
  std::size_t count_ = 0;
  std::array<fs::path, kMaxCount> paths_;
  std::array<std::vector<orxcore::WString>, kMaxCount + 1> widePathsOfCount_;
  std::array<Bytes, kMaxCount> contents_;
  std::array<Bytes, kMaxCount> onDisk_;  // what each file holds while present
  std::array<bool, kMaxCount> present_{};
};

// What one SpannedFile must do, given the segment files as they were when it
// was made.
class SpannedFileModel {
 public:
  explicit SpannedFileModel(const Segments& segments) {
    const std::size_t count = segments.count();
    for (std::size_t i = 0; i < count; ++i) {
      // A missing file counts as empty; an empty segment is replaced by the
      // one after it, so only a trailing empty one is still opened.
      const Bytes empty;
      const Bytes& content = segments.present(i) ? segments.content(i) : empty;
      joined_.insert(joined_.end(), content.begin(), content.end());
      if (!content.empty() || i + 1 == count) opened_.push_back(i);
    }
  }

  std::int64_t size() const { return static_cast<std::int64_t>(joined_.size()); }
  const Bytes& joined() const { return joined_; }
  int openFileCount() const { return handles_.empty() ? 0 : static_cast<int>(opened_.size()); }

  std::uint32_t Open(const Segments& segments) {
    if (handles_.empty()) {
      for (std::size_t i : opened_) {
        if (!segments.present(i)) return SpannedFile::kInvalidHandle;
      }
    }
    const std::uint32_t handle = next_++;
    handles_[handle] = 0;
    return handle;
  }

  void Close(std::uint32_t handle) { handles_.erase(handle); }

  void Seek(std::uint32_t handle, std::int64_t position) {
    const auto entry = handles_.find(handle);
    if (entry != handles_.end()) entry->second = position;
  }

  // Where in the joined bytes a read of `count` starts and how much it
  // delivers; moves the handle on by that much.
  std::pair<std::int64_t, std::int32_t> Read(std::uint32_t handle, std::int32_t count) {
    const auto entry = handles_.find(handle);
    if (entry == handles_.end() || count < 1) return {0, 0};
    const std::int64_t position = entry->second;
    if (position < 0 || position >= size()) return {position, 0};
    const auto n = static_cast<std::int32_t>(std::min<std::int64_t>(count, size() - position));
    entry->second += n;
    return {position, n};
  }

 private:
  Bytes joined_;
  std::vector<std::size_t> opened_;  // segments that Open opens
  std::map<std::uint32_t, std::int64_t> handles_;
  std::uint32_t next_ = 1;
};

struct WrapperModel {
  explicit WrapperModel(const Segments& segments) : file(segments) {}

  SpannedFileModel file;
  std::uint32_t handle = 0;
  std::uint64_t position = 0;
};

// One input's run: a SpannedFile and a stream wrapper beside their models.
class Session {
 public:
  Session(Segments& segments, ByteReader& input)
      : segments_(segments), input_(input), openWrapperWhenMade_(input_.Byte() & 1) {}

  ~Session() {
    file_.reset();
    wrapper_.reset();
    FUZZ_CHECK(segments_.OpenFileCount() == 0);
  }

  void Run() {
    for (int i = 0; i < kMaxOperations && !input_.empty(); ++i) Step();
  }

 private:
  enum Operation {
    kFileOpen, kFileClose, kFileSeek, kFileRead, kFileGetSize, kFileRebuild,
    kWrapperOpen, kWrapperSetPosition, kWrapperRead, kWrapperGetPosition, kWrapperEnd,
    kWrapperClose, kWrapperGetLength, kWrapperRebuild,
    kDeleteSegment, kWriteSegment,
    kOperationCount
  };

  void Step() {
    const unsigned operation = input_.Below(kOperationCount);
    // Each object is made when an operation first needs it: making one costs
    // a look at every segment file, and many inputs use only one of them.
    if (operation <= kFileRebuild && !file_) RebuildFile();
    if (operation >= kWrapperOpen && operation <= kWrapperRebuild && !wrapper_) RebuildWrapper(openWrapperWhenMade_);
    switch (operation) {
      case kFileOpen: {
        const std::uint32_t handle = file_->Open();
        FUZZ_CHECK(handle == fileModel_->Open(segments_));
        handedOut_.push_back(handle);
        CheckOpenFiles();
        break;
      }
      case kFileClose: {
        const std::uint32_t handle = PickHandle();
        file_->Close(handle);
        fileModel_->Close(handle);
        CheckOpenFiles();
        break;
      }
      case kFileSeek: {
        const std::uint32_t handle = PickHandle();
        const std::int64_t position = PickPosition(fileModel_->size());
        file_->Seek(handle, position);
        fileModel_->Seek(handle, position);
        break;
      }
      case kFileRead: {
        const std::uint32_t handle = PickHandle();
        const std::int32_t count = PickCount(fileModel_->size());
        const auto [offset, expected] = fileModel_->Read(handle, count);
        Bytes buffer = Buffer(count, expected);
        const std::int32_t n = file_->Read(handle, buffer.data(), count);
        CheckDelivered(buffer, n, expected, fileModel_->joined(), offset);
        break;
      }
      case kFileGetSize:
        FUZZ_CHECK(file_->GetSize() == fileModel_->size());
        break;
      case kFileRebuild:
        RebuildFile();
        break;
      case kWrapperOpen: {
        if (wrapperModel_->handle == 0) wrapperModel_->handle = wrapperModel_->file.Open(segments_);
        FUZZ_CHECK(wrapper_->Open() == wrapperModel_->handle);
        CheckOpenFiles();
        break;
      }
      case kWrapperSetPosition: {
        const auto position = static_cast<std::uint64_t>(PickPosition(wrapperModel_->file.size()));
        wrapper_->SetPosition(position);
        wrapperModel_->file.Seek(wrapperModel_->handle, static_cast<std::int64_t>(position));
        wrapperModel_->position = position;
        break;
      }
      case kWrapperRead: {
        const std::uint32_t count =
            input_.Below(4) == 0 ? input_.U32() : PickSmallCount(wrapperModel_->file.size());
        const auto wanted = static_cast<std::int32_t>(
            std::min<std::uint32_t>(count, std::numeric_limits<std::int32_t>::max()));
        const auto [offset, expected] = wrapperModel_->file.Read(wrapperModel_->handle, wanted);
        Bytes buffer = Buffer(wanted, expected);
        const std::int64_t n = wrapper_->Read(buffer.data(), count);
        FUZZ_CHECK(n >= 0 && n <= std::numeric_limits<std::int32_t>::max());
        CheckDelivered(buffer, static_cast<std::int32_t>(n), expected, wrapperModel_->file.joined(), offset);
        wrapperModel_->position += static_cast<std::uint64_t>(expected);
        FUZZ_CHECK(wrapper_->GetPosition() == wrapperModel_->position);
        break;
      }
      case kWrapperGetPosition:
        FUZZ_CHECK(wrapper_->GetPosition() == wrapperModel_->position);
        break;
      case kWrapperEnd:
        FUZZ_CHECK(wrapper_->IsEndOfStream() ==
                   (wrapperModel_->position >= static_cast<std::uint64_t>(wrapperModel_->file.size())));
        break;
      case kWrapperClose:
        wrapper_->Close();
        if (wrapperModel_->handle != 0) wrapperModel_->file.Close(wrapperModel_->handle);
        wrapperModel_->handle = 0;
        CheckOpenFiles();
        break;
      case kWrapperGetLength:
        FUZZ_CHECK(wrapper_->GetLength() == static_cast<std::uint64_t>(wrapperModel_->file.size()));
        break;
      case kWrapperRebuild:
        RebuildWrapper(input_.Byte() & 1);
        break;
      case kDeleteSegment:
        if (segments_.count() > 0) segments_.Delete(input_.Below(static_cast<unsigned>(segments_.count())));
        break;
      case kWriteSegment:
        if (segments_.count() > 0) segments_.Write(input_.Below(static_cast<unsigned>(segments_.count())));
        break;
    }
  }

  void RebuildFile() {
    file_.reset();
    file_ = std::make_unique<SpannedFile>(segments_.widePaths());
    fileModel_ = std::make_unique<SpannedFileModel>(segments_);
    FUZZ_CHECK(file_->GetSize() == fileModel_->size());
    CheckOpenFiles();
  }

  // Made and opened as the decoder's platform layer does, or left unopened.
  void RebuildWrapper(bool open) {
    wrapper_.reset();
    wrapper_ = std::make_unique<SpannedFileStreamWrapper>(segments_.widePaths());
    wrapperModel_ = std::make_unique<WrapperModel>(segments_);
    if (open) {
      wrapperModel_->handle = wrapperModel_->file.Open(segments_);
      FUZZ_CHECK(wrapper_->Open() == wrapperModel_->handle);
    }
    FUZZ_CHECK(wrapper_->GetPosition() == 0);
    CheckOpenFiles();
  }

  // A handle handed out before (maybe closed, maybe of an earlier file),
  // the next one to come, or one never handed out.
  std::uint32_t PickHandle() {
    switch (input_.Below(8)) {
      case 0: return 0;
      case 1: return SpannedFile::kInvalidHandle;
      case 2: return input_.U32();
      case 3: return static_cast<std::uint32_t>(handedOut_.size() + 1);
      default:
        if (handedOut_.empty()) return 1;
        return handedOut_[input_.Byte() % handedOut_.size()];
    }
  }

  // Mostly near the segments, sometimes anywhere.
  std::int64_t PickPosition(std::int64_t size) {
    if (input_.Below(8) == 0) return static_cast<std::int64_t>(input_.U64());
    return static_cast<std::int64_t>(input_.U16() % (size + 9)) - 4;
  }

  std::uint32_t PickSmallCount(std::int64_t size) {
    return input_.U16() % static_cast<std::uint32_t>(size + 9);
  }

  std::int32_t PickCount(std::int64_t size) {
    if (input_.Below(8) == 0) return static_cast<std::int32_t>(input_.U32());
    return static_cast<std::int32_t>(PickSmallCount(size)) - 2;
  }

  // As large as asked for when that is small; otherwise only as large as the
  // model says the read delivers, so that AddressSanitizer sees any write
  // beyond it. Guard bytes follow either way.
  static Bytes Buffer(std::int32_t count, std::int32_t expected) {
    const std::int32_t size = count >= 0 && count <= 1 << 16 ? count : expected;
    return Bytes(static_cast<std::size_t>(size) + kGuardBytes, kUntouched);
  }

  // The expected bytes came, and nothing was written after them.
  static void CheckDelivered(const Bytes& buffer, std::int32_t n, std::int32_t expected,
                             const Bytes& joined, std::int64_t offset) {
    FUZZ_CHECK(n == expected);
    if (n > 0) {
      FUZZ_CHECK(std::memcmp(buffer.data(), joined.data() + offset, static_cast<std::size_t>(n)) == 0);
    }
    FUZZ_CHECK(std::all_of(buffer.begin() + std::max(n, 0), buffer.end(),
                           [](std::uint8_t b) { return b == kUntouched; }));
  }

  // Segment files are open exactly while their object holds a handle.
  void CheckOpenFiles() const {
    const int expected =
        (fileModel_ ? fileModel_->openFileCount() : 0) + (wrapperModel_ ? wrapperModel_->file.openFileCount() : 0);
    FUZZ_CHECK(segments_.OpenFileCount() == expected);
  }

  Segments& segments_;
  ByteReader& input_;
  std::unique_ptr<SpannedFile> file_;
  std::unique_ptr<SpannedFileModel> fileModel_;
  std::unique_ptr<SpannedFileStreamWrapper> wrapper_;
  std::unique_ptr<WrapperModel> wrapperModel_;
  std::vector<std::uint32_t> handedOut_;
  const bool openWrapperWhenMade_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Segments segments(aurivox_fuzz::ScratchFolder() / "segments");
  ByteReader input(data, size);
  segments.Reset(input);
  Session session(segments, input);
  session.Run();
  return 0;
}
