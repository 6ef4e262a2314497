#include "orxcore/Trace.h"

#include <gtest/gtest.h>

namespace orxcore {
namespace {

class TraceTest : public ::testing::Test {
 protected:
  void TearDown() override { SetTraceConfiguration(""); }
};

TEST_F(TraceTest, WildcardsSwitchOnCategoriesUpToTheirLevel) {
  SetTraceConfiguration("windowsmediafoundation.MFReader.*=6");
  EXPECT_TRUE(TraceEnabled("windowsmediafoundation.MFReader.SetupAudio", 6));
  EXPECT_TRUE(TraceEnabled("windowsmediafoundation.MFReader.Seek", 5));
  EXPECT_FALSE(TraceEnabled("windowsmediafoundation.MFReader.Seek", 7));
  EXPECT_FALSE(TraceEnabled("windowsmediafoundation.MFByteStream", 5));
}

TEST_F(TraceTest, LastMatchingRuleDecides) {
  SetTraceConfiguration("*=7; a.*.c=5 , a.b.c=0");
  EXPECT_TRUE(TraceEnabled("x.y", 7));
  EXPECT_FALSE(TraceEnabled("a.b.c", 5));
  EXPECT_TRUE(TraceEnabled("a.q.c", 5));
  EXPECT_FALSE(TraceEnabled("a.q.c", 6));
}

TEST_F(TraceTest, ChangeCountGrowsByOneWithEveryConfiguration) {
  const std::uint32_t before = TraceChangeCount();
  SetTraceConfiguration("a=1");
  SetTraceConfiguration("a=2");
  EXPECT_EQ(TraceChangeCount(), before + 2);
}

TEST_F(TraceTest, SiteFollowsConfigurationChanges) {
  TraceSite site("windowsmediafoundation.MFReader.Seek", 7);
  SetTraceConfiguration("");
  EXPECT_FALSE(site.Enabled());
  SetTraceConfiguration("windowsmediafoundation.*=7");
  EXPECT_TRUE(site.Enabled());
  SetTraceConfiguration("windowsmediafoundation.*=5");
  EXPECT_FALSE(site.Enabled());
}

TEST_F(TraceTest, SiteWritesLinesEndingInCrLfToStandardError) {
  TraceSite site("test.Trace", 6);
  SetTraceConfiguration("test.*=6");
  testing::internal::CaptureStderr();
  site.WriteLine("Source MF_MT_AUDIO_NUM_CHANNELS:\t2");
  SetTraceConfiguration("test.*=5");
  site.WriteLine("not written");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Source MF_MT_AUDIO_NUM_CHANNELS:\t2\r\n");
}

}  // namespace
}  // namespace orxcore
