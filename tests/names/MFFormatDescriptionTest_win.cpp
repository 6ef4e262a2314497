// The description functions on real Media Foundation media types.
#include <windows.h>

#include <mfapi.h>
#include <mferror.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include <string>

#include "MFFormatDescription.h"
#include "orxcore/Trace.h"

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

class MFFormatDescription : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_HRESULT_SUCCEEDED(MFStartup(MF_VERSION, MFSTARTUP_FULL)); }
  static void TearDownTestSuite() { MFShutdown(); }
  void SetUp() override { orxcore::SetTraceConfiguration(""); }
  void TearDown() override { orxcore::SetTraceConfiguration(""); }

  static ComPtr<IMFMediaType> TypeWithSubtype(const GUID& major, const GUID& subtype) {
    ComPtr<IMFMediaType> type = EmptyType();
    EXPECT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_MAJOR_TYPE, major));
    EXPECT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_SUBTYPE, subtype));
    return type;
  }

  static ComPtr<IMFMediaType> EmptyType() {
    ComPtr<IMFMediaType> type;
    EXPECT_HRESULT_SUCCEEDED(MFCreateMediaType(&type));
    return type;
  }
};

std::string Text(const orxcore::WString& text) { return orxcore::UTF16toStdString(text); }

TEST_F(MFFormatDescription, AudioTypesAreDescribedByTheirSubtype) {
  EXPECT_EQ(Text(DescribeAudioFormat(TypeWithSubtype(MFMediaType_Audio, MFAudioFormat_PCM).Get())),
            "PCM");
  EXPECT_EQ(Text(DescribeAudioFormat(TypeWithSubtype(MFMediaType_Audio, MFAudioFormat_AAC).Get())),
            "MPEG_HEAAC");
  EXPECT_EQ(
      Text(DescribeAudioFormat(TypeWithSubtype(MFMediaType_Audio, MFAudioFormat_Dolby_AC3).Get())),
      "Dolby Digital (AC-3)");
}

TEST_F(MFFormatDescription, MissingAudioTypeOrSubtypeKeepsThePlaceholder) {
  EXPECT_EQ(Text(DescribeAudioFormat(nullptr)), "Unknown Audio Format: @0");
  EXPECT_EQ(Text(DescribeAudioFormat(EmptyType().Get())), "Unknown Audio Format: @0");
}

TEST_F(MFFormatDescription, UnreadableAudioSubtypeIsTracedUnderItsOperation) {
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=7");
  ComPtr<IMFMediaType> wrongKind = EmptyType();
  ASSERT_HRESULT_SUCCEEDED(wrongKind->SetUINT32(MF_MT_SUBTYPE, 1));
  testing::internal::CaptureStderr();
  EXPECT_EQ(Text(DescribeAudioFormat(EmptyType().Get())), "Unknown Audio Format: @0");
  EXPECT_EQ(Text(DescribeAudioFormat(wrongKind.Get())), "Unknown Audio Format: @0");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: The requested attribute was not found.\r\nError: Invalid type.\r\n");
}

TEST_F(MFFormatDescription, AudioSubtypeIsReadAsItStands) {
  EXPECT_TRUE(AudioSubtype(TypeWithSubtype(MFMediaType_Audio, MFAudioFormat_Float).Get()) ==
              MFAudioFormat_Float);
  EXPECT_TRUE(AudioSubtype(nullptr) == GUID_NULL);
}

TEST_F(MFFormatDescription, EachOperationTracesUnderItsOwnCategoryAtLevelFive) {
  ComPtr<IMFMediaType> empty = EmptyType();
  testing::internal::CaptureStderr();
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetAudioFormatDescription=5");
  EXPECT_TRUE(AudioSubtype(empty.Get()) == GUID_NULL);
  DescribeVideoFormat(empty.Get(), 0, 0, 0, 0);
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetSubAudioFormatType=4");
  AudioSubtype(empty.Get());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

  testing::internal::CaptureStderr();
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetSubAudioFormatType=5");
  AudioSubtype(empty.Get());
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetVideoFormatDescription=5");
  DescribeVideoFormat(empty.Get(), 1920, 1080, 25, 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: The requested attribute was not found.\r\n"
            "Error: The requested attribute was not found.\r\n");
}

TEST_F(MFFormatDescription, MissingVideoTypeOrSubtypeGivesTheBareUnknownText) {
  EXPECT_EQ(Text(DescribeVideoFormat(nullptr, 1920, 1080, 25, 1)), "Unknown Video Format: @0");
  EXPECT_EQ(Text(DescribeVideoFormat(EmptyType().Get(), 1920, 1080, 25, 1)),
            "Unknown Video Format: @0");
}

}  // namespace
}  // namespace windowsmediafoundation
