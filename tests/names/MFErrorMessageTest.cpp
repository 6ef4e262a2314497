#include "MFErrorMessage.h"

#include <gtest/gtest.h>

#include "orxcore/Trace.h"

namespace windowsmediafoundation {
namespace {

TEST(MFErrorMessage, NamedCodesHaveThePlatformsTextsAndOthersTheDefaultInUpperCaseHex) {
  const std::pair<std::uint32_t, const char16_t*> kCases[] = {
      {0x80004005, u"Unspecified failure"},
      {0xC00DA7FD, u"The hardware stream is not connected yet."},
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
