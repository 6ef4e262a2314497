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
  void TearDown() override { orxcore::SetTraceConfiguration(""); }

  // An audio type with `subtype`, or without one for GUID_NULL.
  static ComPtr<IMFMediaType> AudioType(const GUID& subtype) {
    ComPtr<IMFMediaType> type;
    EXPECT_HRESULT_SUCCEEDED(MFCreateMediaType(&type));
    EXPECT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio));
    if (subtype != GUID_NULL) EXPECT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_SUBTYPE, subtype));
    return type;
  }
};

std::string Audio(IMFMediaType* type) { return orxcore::UTF16toStdString(DescribeAudioFormat(type)); }

TEST_F(MFFormatDescription, AudioTypesAreDescribedByTheirSubtype) {
  EXPECT_EQ(Audio(AudioType(MFAudioFormat_AAC).Get()), "MPEG_HEAAC");
  EXPECT_EQ(Audio(AudioType(MFAudioFormat_Dolby_AC3).Get()), "Dolby Digital (AC-3)");
  EXPECT_TRUE(AudioSubtype(AudioType(MFAudioFormat_Float).Get()) == MFAudioFormat_Float);
  EXPECT_TRUE(AudioSubtype(nullptr) == GUID_NULL);
  EXPECT_EQ(Audio(nullptr), "Unknown Audio Format: @0");
  EXPECT_EQ(orxcore::UTF16toStdString(DescribeVideoFormat(nullptr, 1920, 1080, 25, 1)), "Unknown Video Format: @0");
  EXPECT_EQ(orxcore::UTF16toStdString(DescribeVideoFormat(AudioType(GUID_NULL).Get(), 1920, 1080, 25, 1)),
            "Unknown Video Format: @0");
}

TEST_F(MFFormatDescription, UnreadableSubtypeKeepsThePlaceholderAndIsTracedUnderItsOperationAtLevelFive) {
  ComPtr<IMFMediaType> empty = AudioType(GUID_NULL);
  ComPtr<IMFMediaType> wrongKind = AudioType(GUID_NULL);
  ASSERT_HRESULT_SUCCEEDED(wrongKind->SetUINT32(MF_MT_SUBTYPE, 1));
  testing::internal::CaptureStderr();
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetAudioFormatDescription=5");
  EXPECT_EQ(Audio(empty.Get()), "Unknown Audio Format: @0");
  EXPECT_EQ(Audio(wrongKind.Get()), "Unknown Audio Format: @0");
  AudioSubtype(empty.Get());
  DescribeVideoFormat(empty.Get(), 0, 0, 0, 0);
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetSubAudioFormatType=4");
  AudioSubtype(empty.Get());
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetSubAudioFormatType=5");
  AudioSubtype(empty.Get());
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetVideoFormatDescription=5");
  DescribeVideoFormat(empty.Get(), 1920, 1080, 25, 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: The requested attribute was not found.\r\nError: Invalid type.\r\n"
            "Error: The requested attribute was not found.\r\nError: The requested attribute was not found.\r\n");
}

}  // namespace
}  // namespace windowsmediafoundation
