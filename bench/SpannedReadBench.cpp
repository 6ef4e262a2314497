// spanned_read_bench SOURCE WORK_FOLDER
// Reads the bytes of SOURCE whole, once from a copy of it in one file and
// once each through SpannedFile over the same bytes cut into 3 and into 30
// segment files, in the chunk sizes Media Foundation and a host ask for.
// Opening is left out: it is paid once a recording, reading once a byte.
// The copies must stay in memory, as files in a RAM-backed folder or in the
// file cache, or the figures measure the disk. SOURCE should be several
// times the size of the last-level cache: a file that nearly fits reads
// faster or slower by what the previous pass left there.
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "SpannedFile.h"
#include "ZUM/File.h"
#include "support/Measure.h"
#include "support/SplitRecording.h"
#include "support/Table.h"

namespace {

// A pass lasts tens of milliseconds; many rounds steady the medians.
constexpr int kRounds = 51;
// Time through the segments over time for the one file.
constexpr double kGoal = 1.10;

// Through a volatile sink so the compiler cannot drop the reads.
volatile std::uint8_t g_sink;

// Where the reads go: each read to the next of several buffers, as a host's
// reads go to the buffers it decodes into. How fast the kernel copies a
// file's pages depends on where they and the buffer lie in physical memory,
// by up to half on a virtual machine, so one buffer would favour
// whichever file happens to suit it, for a whole run.
class ReadBuffers {
 public:
  explicit ReadBuffers(std::size_t size) : buffers_(kCount, std::vector<std::uint8_t>(size)) {}
  std::vector<std::uint8_t>& Next() { return buffers_[next_++ % kCount]; }

 private:
  static constexpr std::size_t kCount = 8;
  std::vector<std::vector<std::uint8_t>> buffers_;
  std::size_t next_ = 0;
};

// The one file, opened once; each pass reads it whole from its start.
class OneFile {
 public:
  explicit OneFile(const orxcore::WString& path) {
    opened_ = ZUM::File::Open(path, ZUM::kAccessRead, file_, true) >= 0;
  }
  ~OneFile() { file_.Close(); }

  std::uint64_t ReadAll(ReadBuffers& buffers) {
    if (!opened_ || file_.SetFilePointer(0, ZUM::kFromBeginning) < 0) return 0;
    std::uint64_t total = 0;
    for (;;) {
      std::vector<std::uint8_t>& buffer = buffers.Next();
      std::uint32_t got = 0;
      if (file_.Read(buffer.data(), static_cast<std::uint32_t>(buffer.size()), got) < 0 || got == 0) break;
      g_sink = buffer[got - 1];
      total += got;
    }
    return total;
  }

 private:
  ZUM::File file_;
  bool opened_ = false;
};

// The segments, opened once as one SpannedFile; each pass reads it whole.
class Spanned {
 public:
  explicit Spanned(const std::vector<orxcore::WString>& segments) : file_(segments), handle_(file_.Open()) {}
  ~Spanned() { file_.Close(handle_); }

  std::uint64_t ReadAll(ReadBuffers& buffers) {
    if (handle_ == Aurivox::SpannedFile::kInvalidHandle) return 0;
    file_.Seek(handle_, 0);
    std::uint64_t total = 0;
    for (;;) {
      std::vector<std::uint8_t>& buffer = buffers.Next();
      const std::int32_t got = file_.Read(handle_, buffer.data(), static_cast<std::int32_t>(buffer.size()));
      if (got <= 0) break;
      g_sink = buffer[static_cast<std::size_t>(got) - 1];
      total += static_cast<std::uint64_t>(got);
    }
    return total;
  }

 private:
  Aurivox::SpannedFile file_;
  std::uint32_t handle_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: spanned_read_bench SOURCE WORK_FOLDER\n";
    return 2;
  }
  const std::filesystem::path source = std::filesystem::u8path(argv[1]);
  const std::filesystem::path work = std::filesystem::u8path(argv[2]);
  // The one file is a copy written by the same code as the segments, in
  // turns with them, rather than a file written at some other time.
  const bench::SplitRecordings recordings = bench::MakeSplitRecordings(source, work);
  if (recordings.empty()) {
    std::cerr << "spanned_read_bench: cannot split " << argv[1] << " into " << argv[2] << "\n";
    return 1;
  }
  OneFile one(recordings.one.segments.front());
  Spanned threeFiles(recordings.three.segments);
  Spanned thirtyFiles(recordings.thirty.segments);
  ReadBuffers probe(1 << 20);
  const std::uint64_t bytes = one.ReadAll(probe);
  if (bytes == 0 || threeFiles.ReadAll(probe) != bytes || thirtyFiles.ReadAll(probe) != bytes) {
    std::cerr << "spanned_read_bench: the segments do not hold the bytes of the file\n";
    return 1;
  }

  std::cout << "Reading " << bytes / (1 << 20) << " MiB whole from its start: SpannedFile over 3 and 30 segment\n"
            << "files vs a copy in one file read with the same file API and chunk size, each opened once\n"
            << "beforehand; median of " << kRounds << " interleaved rounds (warm file cache); x one file =\n"
            << "time / time of the one file\n\n";
  bench::Table table({"chunk", "source", "ms", "MB/s", "x one file"});
  for (const std::size_t chunk : {std::size_t{64} << 10, std::size_t{1} << 20}) {
    ReadBuffers buffers(chunk);
    const std::vector<double> seconds = bench::MedianSecondsPerRun(
        {[&] { one.ReadAll(buffers); }, [&] { threeFiles.ReadAll(buffers); }, [&] { thirtyFiles.ReadAll(buffers); }},
        kRounds);
    const char* names[] = {"one file (reference)", "SpannedFile, 3 segments", "SpannedFile, 30 segments"};
    const std::string chunkName = std::to_string(chunk >> 10) + " KiB";
    for (std::size_t i = 0; i < seconds.size(); ++i) {
      table.AddRow({chunkName, names[i], bench::Fixed(seconds[i] * 1e3, 1),
                    bench::Fixed(double(bytes) / seconds[i] / 1e6, 0), bench::Fixed(seconds[i] / seconds[0], 3)});
      if (i == 0) continue;
      bench::PrintSummaryRow(std::cout, {std::string("split read (") + BENCH_PLATFORM + ")",
                                         std::string(names[i]).substr(13) + ", " + chunkName + " reads",
                                         bench::Fixed(double(bytes) / seconds[i] / 1e6, 0) + " MB/s",
                                         bench::Fixed(double(bytes) / seconds[0] / 1e6, 0) + " MB/s one file",
                                         bench::Fixed(seconds[i] / seconds[0], 3) + " x time"},
                             seconds[i] / seconds[0], bench::Goal::AtMost(kGoal));
    }
  }
  table.Print(std::cout);
  return 0;
}
