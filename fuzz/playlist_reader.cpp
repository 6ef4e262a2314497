// Arbitrary bytes as a playlist file: every play item handed to a visitor
// must lie wholly inside the file, where the header says items are.
#include <algorithm>
#include <cstring>

#include "AVCHDUtils.h"
#include "FuzzSupport.h"

namespace {

using aurivox_fuzz::ReadBigEndian16;
using aurivox_fuzz::ReadBigEndian32;

constexpr std::size_t kFirstItemOffset = 10;  // after the section's length and counts

class CheckingVisitor : public AVCHDUtils::PlayItemVisitor {
 public:
  CheckingVisitor(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool Visit(const std::uint8_t* item) override {
    // Items are only handed over for a well-tagged header that holds the
    // start address; the first one sits 10 bytes into the section.
    FUZZ_CHECK(size_ >= 12 && std::memcmp(data_, "MPLS0100", 8) == 0);
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(item);
    if (visited_ == 0) {
      base_ = address - (std::uintptr_t{ReadBigEndian32(data_ + 8)} + kFirstItemOffset);
      next_ = address - base_;
    }
    const std::size_t offset = address - base_;
    FUZZ_CHECK(offset == next_);  // each item follows the one before
    FUZZ_CHECK(offset + 2 <= size_);
    const std::size_t itemSize = 2 + std::size_t{ReadBigEndian16(data_ + offset)};
    FUZZ_CHECK(offset + itemSize <= size_);
    FUZZ_CHECK(offset + AVCHDUtils::kPlayItemBytesRead <= size_);
    // Touching every byte lets AddressSanitizer see any that lie outside.
    const std::size_t readable = std::max(itemSize, AVCHDUtils::kPlayItemBytesRead);
    FUZZ_CHECK(std::memcmp(item, data_ + offset, readable) == 0);
    next_ = offset + itemSize;
    ++visited_;
    return true;
  }

  std::size_t visited() const { return visited_; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::uintptr_t base_ = 0;
  std::size_t next_ = 0;
  std::size_t visited_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto path = aurivox_fuzz::ScratchFolder() / "00001.mpls";
  static const orxcore::WString widePath = aurivox_fuzz::ToWString(path);
  aurivox_fuzz::WriteFile(path, data, size);
  CheckingVisitor visitor(data, size);
  AVCHDUtils::VisitPlayItems(widePath, visitor);
  if (visitor.visited() > 0) {
    const std::uint32_t start = ReadBigEndian32(data + 8);
    FUZZ_CHECK(visitor.visited() <= ReadBigEndian16(data + start + 6));  // the declared item count
  }
  return 0;
}
