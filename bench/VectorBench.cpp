// Throughput of XorConstantInPlace32 per dispatch level, on one 1920-pixel row
// and on a whole 1920x1080 frame of 32-bit pixels, against memset of the same
// buffer timed in the same rounds.
#include <cstdint>
#include <cstring>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "DispatchState.h"
#include "XorConstant.h"
#include "support/Measure.h"
#include "support/Table.h"

namespace {

using vectorkernels::XorConstantFunction;

constexpr std::uint32_t kOpaque = 0xFF000000;

// Through a volatile pointer so the compiler cannot drop or fold the reference.
void* (*volatile memsetFunction)(void*, int, std::size_t) = std::memset;

// Pixels on a 64-byte boundary, as picture buffers usually are.
class PixelBuffer {
 public:
  explicit PixelBuffer(std::int32_t pixels)
      : storage_(static_cast<std::size_t>(pixels) + 16), pixels_(pixels) {
    const auto address = reinterpret_cast<std::uintptr_t>(storage_.data());
    data_ = storage_.data() + ((64 - address % 64) % 64) / 4;
    for (std::int32_t i = 0; i < pixels; ++i)
      data_[i] = static_cast<std::uint32_t>(i) * 2654435761u;
  }
  std::uint32_t* Data() { return data_; }
  std::int32_t Pixels() const { return pixels_; }
  std::size_t Bytes() const { return 4 * static_cast<std::size_t>(pixels_); }

 private:
  std::vector<std::uint32_t> storage_;
  std::int32_t pixels_;
  std::uint32_t* data_;
};

struct Candidate {
  std::string name;
  std::function<void()> call;
};

void MeasureBuffer(const char* label, std::int32_t pixels, vectorkernels::CpuFeatureMask detected,
                   bench::Table& table) {
  PixelBuffer buffer(pixels);
  std::uint32_t* data = buffer.Data();
  const std::size_t bytes = buffer.Bytes();

  std::vector<Candidate> candidates;
  candidates.push_back({"memset (reference)", [=] { memsetFunction(data, 0x5A, bytes); }});
  for (std::int32_t level = 0; level <= 5; ++level) {
    if (!vectorkernels::CanRunVariant(level, detected)) continue;
    const XorConstantFunction variant = vectorkernels::XorConstantVariant(level);
    candidates.push_back(
        {"level " + std::to_string(level) + " " + vectorkernels::VariantName(level),
         [=] { variant(kOpaque, data, pixels); }});
  }
  candidates.push_back(
      {"dispatched (level " + std::to_string(vectorkernels::CurrentDispatchLevel()) + ")",
       [=] { vectorkernels::XorConstantInPlace32(kOpaque, data, pixels); }});

  std::vector<std::function<void()>> calls;
  for (const Candidate& c : candidates) calls.push_back(c.call);
  const std::vector<double> nanoseconds = bench::MedianNanosecondsPerCall(calls);

  const double reference = nanoseconds.front();
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    table.AddRow({label, candidates[i].name, bench::Fixed(nanoseconds[i], 1),
                  bench::Fixed(static_cast<double>(bytes) / nanoseconds[i], 2),
                  bench::Fixed(reference / nanoseconds[i], 2)});
  }
  const double dispatched = nanoseconds.back();
  bench::PrintSummaryRow(std::cout, {"vector kernel (native)", std::string("XorConstantInPlace32, ") + label,
                                     bench::Fixed(static_cast<double>(bytes) / dispatched, 2) + " GB/s",
                                     bench::Fixed(static_cast<double>(bytes) / reference, 2) + " GB/s memset",
                                     bench::Fixed(reference / dispatched, 2) + " x memset"},
                         reference / dispatched, bench::Goal{});
}

}  // namespace

int main() {
  vectorkernels::CpuFeatureMask detected = 0;
  vectorkernels::DetectCpuFeatures(&detected);
  const vectorkernels::VectorStatus status = vectorkernels::InitDispatch();
  std::cout << "XorConstantInPlace32(0xFF000000) vs memset of the same buffer\n"
            << "detected features 0x" << std::hex << detected << std::dec << ", dispatch level "
            << vectorkernels::CurrentDispatchLevel() << " (set-up status " << status << ")\n"
            << "median of " << bench::MeasureOptions{}.rounds
            << " interleaved rounds; x memset = memset time / kernel time\n\n";

  bench::Table table({"buffer", "code", "ns/call", "GB/s", "x memset"});
  MeasureBuffer("row 1920 px (7.5 KiB)", 1920, detected, table);
  MeasureBuffer("frame 1920x1080 (7.9 MiB)", 1920 * 1080, detected, table);
  table.Print(std::cout);
  return 0;
}
