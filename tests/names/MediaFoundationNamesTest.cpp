// The texts Media Foundation's codes and types are known by.
#include <gtest/gtest.h>

#include <tuple>

#include "MFErrorMessage.h"
#include "MediaTypeNameTable.h"
#include "MediaTypeNames.h"
#include "orxcore/Trace.h"

namespace windowsmediafoundation {
namespace {

using orxcore::Guid;

// A code on the wave-format-tag base, and one on the media-type attribute base.
Guid Subtype(std::uint32_t code) { return {code, 0, 0x10, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}}; }
Guid OnAttributeBase(std::uint32_t code) {
  return {code, 0x767A, 0x494D, {0xB4, 0x78, 0xF2, 0x9D, 0x25, 0xDC, 0x90, 0x37}};
}

TEST(SubtypeDescription, AudioHasTheLastMatchingRowOrTheGuidInBraces) {
  const std::pair<Guid, const char16_t*> kCases[] = {
      {Subtype(0x0001), u"PCM"}, {kMediaSubtypeBase, u"IEC 60958 PCM"},
      {{0xE06D802C, 0xDB46, 0x11CF, {0xB4, 0xD1, 0x00, 0x80, 0x5F, 0x6C, 0xBB, 0xEA}}, u"Dolby Digital (AC-3)"},
      {Guid{}, u""},  // the closing row
      {Subtype(0x704F), u"Unknown Audio Format: {0000704F-0000-0010-8000-00AA00389B71}"}};
  for (const auto& [subtype, text] : kCases) EXPECT_EQ(DescribeAudioSubtype(subtype), text);
  EXPECT_EQ(MediaTypeNameTable().size(), 476u);
  EXPECT_EQ(ColourSpaceNames().back(), u"BT.2100 PQ RGB Full");
}

TEST(SubtypeDescription, VideoHasTheFirstMatchingRowOrFourCharactersOrTheGuidThenSizeAndRate) {
  Guid nearlyOnAttributeBase = OnAttributeBase(0x61766331);
  nearlyOnAttributeBase.data4[7] ^= 1;
  const Guid h264 = Subtype(0x34363248);
  const std::tuple<Guid, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, const char16_t*> kCases[] = {
      {Subtype(0x0001), 0, 0, 0, 0, u"Uncompressed PCM audio"},
      {{0xE436EB7E, 0x524F, 0x11CE, {0x9F, 0x53, 0x00, 0x20, 0xAF, 0x0B, 0xA7, 0x70}}, 0, 0, 0, 0, u"RGB, 32 bpp"},
      {kMediaTypeAttributeBase, 0, 0, 0, 0, u"Base"},
      {OnAttributeBase(0x807F41FF), 0, 0, 0, 0, u"Unknown Video Format: '?\x7F" "A?'"},
      {nearlyOnAttributeBase, 0, 0, 0, 0, u"Unknown Video Format: {61766331-767A-494D-B478-F29D25DC9036}"},
      {h264, 1920, 1080, 30000, 1001, u"H.264, 1920 x 1080, (29.97)"},
      {h264, 4294967295u, 0, 1, 1, u"H.264"}, {h264, 1920, 0, 1, 2, u"H.264, (0.5)"}};
  for (const auto& [subtype, width, height, numerator, denominator, text] : kCases) {
    EXPECT_EQ(DescribeVideoSubtype(subtype, width, height, numerator, denominator), text);
  }
}

TEST(MFErrorMessage, NamedCodesHaveThePlatformsTextsAndOthersTheDefaultInUpperCaseHex) {
  const std::pair<std::uint32_t, const char16_t*> kCases[] = {
      {0x80004005, u"Unspecified failure"}, {0xC00DA7FD, u"The hardware stream is not connected yet."},
      // Near neighbours of a named code.
      {0xC00D36E6, u"The requested attribute was not found."},
      {0x800D36E6, u"Media Foundation returned error 0x800D36E6"},
      {0x000D36E6, u"Media Foundation returned error 0xD36E6"}};
  for (const auto& [code, text] : kCases) EXPECT_EQ(MFErrorMessage(code), text) << std::hex << code;
}

TEST(MFErrorMessage, TraceLinesOnlyWhenTheSiteIsOn) {
  orxcore::TraceSite site("windowsmediafoundation.MFReader.Test", 5);
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=5");
  testing::internal::CaptureStderr();
  TraceMFError(site, static_cast<std::int32_t>(0x80004005));
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=4");
  TraceMFError(site, static_cast<std::int32_t>(0x80004003));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: Unspecified failure\r\n");
  orxcore::SetTraceConfiguration("");
}

}  // namespace
}  // namespace windowsmediafoundation
