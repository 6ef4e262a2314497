// The shape of the name table and the rows the descriptions depend on; the
// GUID of every row with a platform constant is checked when the Windows
// build compiles the table.
#include "MediaTypeNameTable.h"

#include <gtest/gtest.h>

#include <string>

#include "GuidText.h"

namespace windowsmediafoundation {
namespace {

using names_test::GuidFromText;

std::string RowName(std::size_t number) {
  return orxcore::UTF16toStdString(MediaTypeNameTable().at(number - 1).name);
}

TEST(MediaTypeNameTable, RowsThatDecideLookupsAndTheOddOnes) {
  const struct {
    std::size_t number;
    const char* guid;
    const char* name;
  } kRows[] = {
      {1, "00000000-0000-0010-8000-00AA00389B71", "Base"},
      {2, "00000016-0000-0010-8000-00AA00389B71", "RGB, 32 bpp"},
      {59, "00000001-0000-0010-8000-00AA00389B71", "Uncompressed PCM audio"},
      {78, "00000000-767A-494D-B478-F29D25DC9037", "Base"},
      {80, "F7E34C9A-42E8-4714-B74B-CB29D72C35E5", "SUBTYPE"},
      // FORMAT_CAPTIONED_H264VIDEO and MEDIASUBTYPE_V216, which the platform
      // headers here do not carry.
      {324, "A4EFC024-873E-4DA3-898B-474DDBD79FD0", "CAPTIONED_H264VIDEO"},
      {334, "36313256-0000-0010-8000-00AA00389B71", "v216 4:2:2 Packed, 16 bpp"},
      {454, "00000000-0000-0010-8000-00AA00389B71", "IEC 60958 PCM"},
      {469, "00000001-0000-0010-8000-00AA00389B71", "PCM"},
      {476, "00000000-0000-0000-0000-000000000000", ""},
  };
  ASSERT_EQ(MediaTypeNameTable().size(), 476u);
  for (const auto& row : kRows) {
    EXPECT_EQ(MediaTypeNameTable()[row.number - 1].guid, GuidFromText(row.guid)) << row.number;
    EXPECT_EQ(RowName(row.number), row.name) << row.number;
  }
  EXPECT_EQ(MediaTypeNameTable()[0].guid, kMediaSubtypeBase);
  EXPECT_EQ(MediaTypeNameTable()[77].guid, kMediaTypeAttributeBase);
}

TEST(MediaTypeNameTable, DuplicateNameClosesTheAttributeSectionUnderAnotherKey) {
  EXPECT_EQ(RowName(138), "DV_VAUX_CTRL_PACK");
  EXPECT_EQ(RowName(148), "DV_VAUX_CTRL_PACK");
  EXPECT_NE(MediaTypeNameTable()[137].guid, MediaTypeNameTable()[147].guid);
}

TEST(MediaTypeNameTable, EveryNameIsPrintableAscii) {
  for (std::size_t number = 1; number <= kMediaTypeNameCount; ++number) {
    for (char16_t c : MediaTypeNameTable()[number - 1].name) {
      EXPECT_TRUE(c >= 0x20 && c < 0x7F) << "row " << number;
    }
  }
}

TEST(ColourSpaceNames, FullRangeRgbFromBt709ToBt2100Pq) {
  const char* const kNames[] = {"BT.709 RGB Full", "BT.2020 RGB Full", "BT.2020 Linear RGB Full",
                                "BT.2100 HLG RGB Full", "BT.2100 PQ RGB Full"};
  ASSERT_EQ(ColourSpaceNames().size(), std::size(kNames));
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    EXPECT_EQ(orxcore::UTF16toStdString(ColourSpaceNames()[i]), kNames[i]);
  }
}

}  // namespace
}  // namespace windowsmediafoundation
