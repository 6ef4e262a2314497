#include "orxcore/Trace.h"

#include <gtest/gtest.h>

#include <tuple>

namespace orxcore {
namespace {

TEST(Trace, LastMatchingRuleDecidesUpToItsLevel) {
  SetTraceConfiguration("*=7; a.*.c=5 , a.b.c=0;windowsmediafoundation.MFReader.*=6");
  const std::tuple<const char*, int, bool> kCases[] = {
      {"windowsmediafoundation.MFReader.Setup", 6, true}, {"windowsmediafoundation.MFReader.Seek", 7, false},
      {"windowsmediafoundation.MFByteStream", 7, true},   {"a.b.c", 0, true},
      {"a.b.c", 1, false}, {"a.q.c", 5, true}, {"a.q.c", 6, false}};
  for (const auto& [category, level, enabled] : kCases) EXPECT_EQ(TraceEnabled(category, level), enabled) << category;
  SetTraceConfiguration("");
}

TEST(Trace, SiteFollowsConfigurationChangesAndWritesCrLfLines) {
  const std::uint32_t before = TraceChangeCount();
  TraceSite site("test.Trace", 6);
  SetTraceConfiguration("test.*=6");
  testing::internal::CaptureStderr();
  site.WriteLine("Source MF_MT_AUDIO_NUM_CHANNELS:\t2");
  SetTraceConfiguration("test.*=5");
  site.WriteLine("not written");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Source MF_MT_AUDIO_NUM_CHANNELS:\t2\r\n");
  SetTraceConfiguration("");
  EXPECT_EQ(TraceChangeCount(), before + 3);
}

}  // namespace
}  // namespace orxcore
