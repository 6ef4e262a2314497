// The description functions on real Media Foundation media types.
#include <windows.h>

#include <mfapi.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

#include "MFFormatDescription.h"
#include "orxcore/Trace.h"

namespace windowsmediafoundation {
namespace {

// A missing type or subtype keeps the placeholder; an unreadable subtype is
// traced under the operation at level 5.
TEST(MFFormatDescription, SubtypeDescribesATypeAndAnUnreadableOneIsTracedUnderItsOperation) {
  ASSERT_HRESULT_SUCCEEDED(MFStartup(MF_VERSION, MFSTARTUP_FULL));
  Microsoft::WRL::ComPtr<IMFMediaType> type;
  ASSERT_HRESULT_SUCCEEDED(MFCreateMediaType(&type));
  EXPECT_EQ(DescribeAudioFormat(nullptr), u"Unknown Audio Format: @0");
  EXPECT_EQ(DescribeVideoFormat(nullptr, 1920, 1080, 25, 1), u"Unknown Video Format: @0");
  testing::internal::CaptureStderr();
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetAudioFormatDescription=5");
  EXPECT_EQ(DescribeAudioFormat(type.Get()), u"Unknown Audio Format: @0");
  EXPECT_TRUE(AudioSubtype(type.Get()) == GUID_NULL);
  orxcore::SetTraceConfiguration("windowsmediafoundation.MFReader.GetVideoFormatDescription=4");
  EXPECT_EQ(DescribeVideoFormat(type.Get(), 1920, 1080, 25, 1), u"Unknown Video Format: @0");
  orxcore::SetTraceConfiguration("");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: The requested attribute was not found.\r\n");
  ASSERT_HRESULT_SUCCEEDED(type->SetGUID(MF_MT_SUBTYPE, MFAudioFormat_Dolby_AC3));
  EXPECT_EQ(DescribeAudioFormat(type.Get()), u"Dolby Digital (AC-3)");
  EXPECT_TRUE(AudioSubtype(type.Get()) == MFAudioFormat_Dolby_AC3);
  MFShutdown();
}

}  // namespace
}  // namespace windowsmediafoundation
