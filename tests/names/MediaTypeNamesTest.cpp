#include "MediaTypeNames.h"

#include <gtest/gtest.h>

#include <string>

#include "GuidText.h"
#include "MediaTypeNameTable.h"
#include "orxcore/Localizer.h"

namespace windowsmediafoundation {
namespace {

using names_test::GuidFromText;

orxcore::Guid Subtype(std::uint32_t code) {
  orxcore::Guid guid = kMediaSubtypeBase;
  guid.data1 = code;
  return guid;
}

orxcore::Guid OnAttributeBase(std::uint32_t code) {
  orxcore::Guid guid = kMediaTypeAttributeBase;
  guid.data1 = code;
  return guid;
}

std::string Audio(const orxcore::Guid& subtype) {
  return orxcore::UTF16toStdString(DescribeAudioSubtype(subtype));
}

std::string Video(const orxcore::Guid& subtype, std::uint32_t width = 0, std::uint32_t height = 0,
                  std::uint32_t rateNumerator = 0, std::uint32_t rateDenominator = 0) {
  return orxcore::UTF16toStdString(
      DescribeVideoSubtype(subtype, width, height, rateNumerator, rateDenominator));
}

TEST(AudioSubtypeDescription, LastMatchingRowNamesTheCommonSubtypes) {
  const struct {
    std::uint32_t code;
    const char* description;
  } kCases[] = {
      {0x0001, "PCM"},
      {0x0003, "IEEE Float"},
      {0x0161, "WMAudioV2"},
      {0x0055, "MP3"},
      {0x1610, "MPEG_HEAAC"},
      {0x0000, "IEC 60958 PCM"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Audio(Subtype(c.code)), c.description) << std::hex << c.code;
  }
  EXPECT_EQ(Audio(GuidFromText("E06D802C-DB46-11CF-B4D1-00805F6CBBEA")), "Dolby Digital (AC-3)");
  EXPECT_EQ(Audio(GuidFromText("A7FB87AF-2D02-42FB-A4D4-05CD93843BDD")), "DOLBY_DDPLUS");
}

TEST(AudioSubtypeDescription, AllZeroSubtypeIsTheClosingRowsEmptyName) {
  EXPECT_EQ(Audio(orxcore::Guid{}), "");
}

TEST(AudioSubtypeDescription, UnknownSubtypeShowsItsGuidInBraces) {
  EXPECT_EQ(Audio(GuidFromText("1234ABCD-9ABC-DEF0-0102-0A0B0C0D0E0F")),
            "Unknown Audio Format: {1234ABCD-9ABC-DEF0-0102-0A0B0C0D0E0F}");
  // A tag that no row names, on the subtype base.
  EXPECT_EQ(Audio(Subtype(0x704F)), "Unknown Audio Format: {0000704F-0000-0010-8000-00AA00389B71}");
}

TEST(AudioSubtypeDescription, UnknownTextKeepsItsPlaceholder) {
  EXPECT_EQ(orxcore::UTF16toStdString(UnknownAudioFormatText()), "Unknown Audio Format: @0");
  EXPECT_EQ(orxcore::UTF16toStdString(UnknownVideoFormatText()), "Unknown Video Format: @0");
}

TEST(VideoSubtypeDescription, FirstMatchingRowWins) {
  EXPECT_EQ(Video(Subtype(0x0000)), "Base");
  EXPECT_EQ(Video(Subtype(0x0001)), "Uncompressed PCM audio");
  EXPECT_EQ(Video(orxcore::Guid{}), "NULL");
  EXPECT_EQ(Video(Subtype(0x34363248)), "H.264");
  // MEDIASUBTYPE_RGB32 is only named in the DirectShow section.
  EXPECT_EQ(Video(GuidFromText("E436EB7E-524F-11CE-9F53-0020AF0BA770")), "RGB, 32 bpp");
  EXPECT_EQ(Video(kMediaTypeAttributeBase), "Base");
}

TEST(VideoSubtypeDescription, UnnamedSubtypeOnTheAttributeBaseShowsFourCharacters) {
  EXPECT_EQ(Video(OnAttributeBase(0x61766331)), "Unknown Video Format: 'avc1'");
  EXPECT_EQ(Video(OnAttributeBase(0x00204A1F)), "Unknown Video Format: '  J '");
  EXPECT_EQ(Video(OnAttributeBase(0x807F41FF)), "Unknown Video Format: '?\x7F" "A?'");
}

TEST(VideoSubtypeDescription, OtherUnnamedSubtypesShowTheirGuid) {
  orxcore::Guid nearlyOnAttributeBase = OnAttributeBase(0x61766331);
  nearlyOnAttributeBase.data4[7] ^= 1;
  EXPECT_EQ(Video(nearlyOnAttributeBase),
            "Unknown Video Format: {61766331-767A-494D-B478-F29D25DC9036}");
  EXPECT_EQ(Video(Subtype(0x31307661)),
            "Unknown Video Format: {31307661-0000-0010-8000-00AA00389B71}");
}

TEST(VideoSubtypeDescription, SizeAndRateFollowTheName) {
  const orxcore::Guid h264 = Subtype(0x34363248);
  EXPECT_EQ(Video(h264, 1920, 1080, 30000, 1001), "H.264, 1920 x 1080, (29.97)");
  EXPECT_EQ(Video(h264, 720, 576, 25, 1), "H.264, 720 x 576, (25.0)");
  EXPECT_EQ(Video(h264, 1280, 720, 24000, 1001), "H.264, 1280 x 720, (23.98)");
  EXPECT_EQ(Video(h264, 4294967295u, 1, 1, 1), "H.264, 4294967295 x 1");
  EXPECT_EQ(Video(OnAttributeBase(0x61766331), 640, 480, 60, 1),
            "Unknown Video Format: 'avc1', 640 x 480, (60.0)");
}

TEST(VideoSubtypeDescription, SizeNeedsBothSidesAndRateNeedsDistinctTerms) {
  const orxcore::Guid h264 = Subtype(0x34363248);
  EXPECT_EQ(Video(h264, 0, 1080, 25, 1), "H.264, (25.0)");
  EXPECT_EQ(Video(h264, 1920, 0, 25, 1), "H.264, (25.0)");
  EXPECT_EQ(Video(h264, 1920, 1080, 30, 30), "H.264, 1920 x 1080");
  EXPECT_EQ(Video(h264, 1920, 1080, 0, 0), "H.264, 1920 x 1080");
  EXPECT_EQ(Video(h264, 1920, 1080, 1, 2), "H.264, 1920 x 1080, (0.5)");
}

class TranslatedFormatTexts : public ::testing::Test {
 protected:
  void TearDown() override { orxcore::Localizer::Get().ClearTranslations(); }
};

TEST_F(TranslatedFormatTexts, UnknownTextsUseTheTranslation) {
  orxcore::Localizer::Get().SetTranslation("$$$/windowsmediafoundation/UnknownAudioFormat",
                                           u"Format audio inconnu\u00A0: @0");
  orxcore::Localizer::Get().SetTranslation("$$$/windowsmediafoundation/UnknownVideoFormat",
                                           u"Unbekanntes Videoformat @0");
  EXPECT_EQ(DescribeAudioSubtype(Subtype(0x704F)),
            u"Format audio inconnu\u00A0: {0000704F-0000-0010-8000-00AA00389B71}");
  EXPECT_EQ(DescribeVideoSubtype(OnAttributeBase(0x61766331), 640, 480, 0, 0),
            u"Unbekanntes Videoformat 'avc1', 640 x 480");
  // Named subtypes are not translated.
  EXPECT_EQ(DescribeAudioSubtype(Subtype(0x0001)), u"PCM");
}

}  // namespace
}  // namespace windowsmediafoundation
