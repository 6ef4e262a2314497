// Audio and video subtype descriptions for arbitrary GUIDs, frame sizes and
// rates: the name comes from the table by its lookup rule (last row for
// audio, first row for video), an unknown GUID gives the unknown text with the
// GUID in it, and the size and rate parts appear exactly when they apply.
//
// Input: records until the input runs out (at most
// kMaxRecordsPerInput). A record is a kind byte (% 4:
// 0 a table row's GUID by a U16 index, with data1 changed by a U32 when the
// next byte % 4 is 0; 1 the subtype base with a U32 data1; 2 the attribute
// base with a U32 data1; 3 sixteen raw bytes), a flags byte (bit 0 no width,
// bit 1 no height, bit 2 rate denominator equal to the numerator), then U32
// width, height, rate numerator and rate denominator.
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "FuzzSupport.h"
#include "MediaTypeNameTable.h"
#include "MediaTypeNames.h"

namespace {

using orxcore::Guid;
using orxcore::WString;
using windowsmediafoundation::MediaTypeNameTable;

constexpr int kNoRow = -1;

std::string Narrow(const WString& text) { return orxcore::UTF16toStdString(text); }

std::string BracedGuidText(const Guid& guid) {
  char text[48];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(guid.data1), guid.data2, guid.data3, guid.data4[0], guid.data4[1],
                guid.data4[2], guid.data4[3], guid.data4[4], guid.data4[5], guid.data4[6], guid.data4[7]);
  return text;
}

// The first and last table rows of each GUID, indexed once: a scan of the
// whole table per lookup would cost most of each run.
struct RowSpan {
  int first;
  int last;
};

int FindRow(const Guid& guid, bool last) {
  static const auto* rows = [] {
    auto* index = new std::map<Guid, RowSpan>;
    const auto& table = MediaTypeNameTable();
    for (int i = 0; i < static_cast<int>(table.size()); ++i) {
      index->emplace(table[i].guid, RowSpan{i, i}).first->second.last = i;
    }
    return index;
  }();
  const auto found = rows->find(guid);
  if (found == rows->end()) return kNoRow;
  return last ? found->second.last : found->second.first;
}

bool OnAttributeBase(const Guid& guid) {
  Guid base = windowsmediafoundation::kMediaTypeAttributeBase;
  base.data1 = guid.data1;
  return base == guid;
}

std::string FourCharacters(std::uint32_t code) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const unsigned byte = code >> shift & 0xFF;
    text += byte < 32 ? ' ' : byte >= 128 ? '?' : static_cast<char>(byte);
  }
  return "'" + text + "'";
}

Guid ReadGuid(aurivox_fuzz::ByteReader& input) {
  Guid guid;
  switch (input.Below(4)) {
    case 0:
      guid = MediaTypeNameTable()[input.U16() % windowsmediafoundation::kMediaTypeNameCount].guid;
      if (input.Below(4) == 0) guid.data1 ^= input.U32();
      break;
    case 1:
      guid = windowsmediafoundation::kMediaSubtypeBase;
      guid.data1 = input.U32();
      break;
    case 2:
      guid = windowsmediafoundation::kMediaTypeAttributeBase;
      guid.data1 = input.U32();
      break;
    default: {
      std::array<std::uint8_t, 16> bytes;
      for (std::uint8_t& byte : bytes) byte = input.Byte();
      guid = Guid::FromBytes(bytes);
    }
  }
  return guid;
}

void CheckAudio(const Guid& subtype) {
  const std::string description = Narrow(windowsmediafoundation::DescribeAudioSubtype(subtype));
  const int row = FindRow(subtype, /*last=*/true);
  if (row != kNoRow) {
    FUZZ_CHECK(description == Narrow(MediaTypeNameTable()[row].name));
  } else {
    FUZZ_CHECK(description == "Unknown Audio Format: " + BracedGuidText(subtype));
  }
}

// "D.D" or "D.DD": the rate with one or two digits after the point.
bool IsRateText(const std::string& text) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos || point == 0) return false;
  const std::size_t decimals = text.size() - point - 1;
  if (decimals < 1 || decimals > 2) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i != point && (text[i] < '0' || text[i] > '9')) return false;
  }
  return true;
}

void CheckRate(const std::string& text, std::uint32_t numerator, std::uint32_t denominator) {
  if (denominator == 0) {
    FUZZ_CHECK(text == "inf");  // 0 / 0 has no rate part: the two are equal
    return;
  }
  FUZZ_CHECK(IsRateText(text));
  const double rate = static_cast<double>(numerator) / denominator;
  FUZZ_CHECK(std::fabs(std::strtod(text.c_str(), nullptr) - rate) <= 0.005 + rate * 1e-12);
}

void CheckVideo(const Guid& subtype, std::uint32_t width, std::uint32_t height, std::uint32_t numerator,
                std::uint32_t denominator) {
  const std::string description =
      Narrow(windowsmediafoundation::DescribeVideoSubtype(subtype, width, height, numerator, denominator));
  const int row = FindRow(subtype, /*last=*/false);
  std::string expected;
  if (row != kNoRow) {
    expected = Narrow(MediaTypeNameTable()[row].name);
  } else {
    expected = "Unknown Video Format: " +
               (OnAttributeBase(subtype) ? FourCharacters(subtype.data1) : BracedGuidText(subtype));
  }
  if (width != 0 && height != 0) expected += ", " + std::to_string(width) + " x " + std::to_string(height);

  FUZZ_CHECK(description.compare(0, expected.size(), expected) == 0);
  const std::string rest = description.substr(expected.size());
  if (numerator == denominator) {
    FUZZ_CHECK(rest.empty());
  } else {
    FUZZ_CHECK(rest.size() > 4 && rest.compare(0, 3, ", (") == 0 && rest.back() == ')');
    CheckRate(rest.substr(3, rest.size() - 4), numerator, denominator);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // No translation is loaded, so the unknown texts are the English defaults.
  static const bool defaults = Narrow(windowsmediafoundation::UnknownAudioFormatText()) ==
                                   "Unknown Audio Format: @0" &&
                               Narrow(windowsmediafoundation::UnknownVideoFormatText()) ==
                                   "Unknown Video Format: @0";
  FUZZ_CHECK(defaults);

  aurivox_fuzz::ByteReader input(data, size);
  for (int record = 0; record < aurivox_fuzz::kMaxRecordsPerInput; ++record) {
    const Guid subtype = ReadGuid(input);
    const unsigned flags = input.Byte();
    std::uint32_t width = input.U32(), height = input.U32();
    const std::uint32_t numerator = input.U32();
    std::uint32_t denominator = input.U32();
    if (flags & 1) width = 0;
    if (flags & 2) height = 0;
    if (flags & 4) denominator = numerator;
    CheckAudio(subtype);
    CheckVideo(subtype, width, height, numerator, denominator);
    if (input.empty()) break;
  }
  return 0;
}
