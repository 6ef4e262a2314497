// The description functions on real Media Foundation media types.
#include <windows.h>

#include <mfapi.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include "MFFormatDescription.h"
#include "orxcore/Trace.h"

namespace windowsmediafoundation {
namespace {

// An audio type with `subtype`, or without one for GUID_NULL.
Microsoft::WRL::ComPtr<IMFMediaType> AudioType(const GUID& subtype) {
  Microsoft::WRL::ComPtr<IMFMediaType> type;
  EXPECT_HRESULT_SUCCEEDED(MFCreateMediaType(&type));
  EXPECT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio));
  if (subtype != GUID_NULL) EXPECT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_SUBTYPE, subtype));
  return type;
}

std::string Text(const orxcore::WString& text) { return orxcore::UTF16toStdString(text); }

// A missing type or subtype keeps the placeholder; an unreadable subtype is
// traced under the operation at level 5.
TEST(MFFormatDescription, SubtypeDescribesATypeAndAnUnreadableOneIsTracedUnderItsOperation) {
  ASSERT_HRESULT_SUCCEEDED(MFStartup(MF_VERSION, MFSTARTUP_FULL));
  const auto empty = AudioType(GUID_NULL);
  EXPECT_EQ(Text(DescribeAudioFormat(AudioType(MFAudioFormat_Dolby_AC3).Get())), "Dolby Digital (AC-3)");
  EXPECT_TRUE(AudioSubtype(AudioType(MFAudioFormat_Float).Get()) == MFAudioFormat_Float);
  EXPECT_TRUE(AudioSubtype(nullptr) == GUID_NULL);
  EXPECT_EQ(Text(DescribeAudioFormat(nullptr)), "Unknown Audio Format: @0");
  EXPECT_EQ(Text(DescribeVideoFormat(nullptr, 1920, 1080, 25, 1)), "Unknown Video Format: @0");
  testing::internal::CaptureStderr();
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetAudioFormatDescription=5");
  EXPECT_EQ(Text(DescribeAudioFormat(empty.Get())), "Unknown Audio Format: @0");
  AudioSubtype(empty.Get());
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetSubAudioFormatType=4");
  AudioSubtype(empty.Get());
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetVideoFormatDescription=5");
  EXPECT_EQ(Text(DescribeVideoFormat(empty.Get(), 1920, 1080, 25, 1)), "Unknown Video Format: @0");
  orxcore::SetTraceConfiguration("");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: The requested attribute was not found.\r\nError: The requested attribute was not found.\r\n");
  MFShutdown();
}

}  // namespace
}  // namespace windowsmediafoundation
