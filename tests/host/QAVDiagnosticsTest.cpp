#include <gtest/gtest.h>

#include <string>

#include "QAVDiagnostics.h"
#include "QAVTestSupport.h"
#include "QAVTraceChannel.h"

TEST(QAVDiagnostics, PointerCheckWritesOneLineOnlyForNull) {
  QAVClearPointerCheckReports();
  int value = 0;
  void* QAVRbaContextBarManager = nullptr;
  testing::internal::CaptureStderr();
  EXPECT_TRUE(QAVCheckPointer("pValue", &value, "Owner::Operation"));
  EXPECT_FALSE(
      QAV_CHECK_POINTER(QAVRbaContextBarManager, "QAVRbaContextBarMappingTypeUVCmd::Activate"));
  EXPECT_FALSE(QAVCheckPointer(nullptr, nullptr, nullptr));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "QAVRbaContextBarManager is NULL QAVRbaContextBarMappingTypeUVCmd::Activate\n"
            " is NULL \n");
  EXPECT_EQ(QAVGetPointerCheckReports(),
            (std::vector<std::string>{
                "QAVRbaContextBarManager is NULL QAVRbaContextBarMappingTypeUVCmd::Activate",
                " is NULL "}));
}

TEST(QAVDiagnosticsDeathTest, FatalErrorNamesMessageFileAndLineThenEnds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(QAVFatalError("the model is gone", "QAVRbaSomething.cpp", 42),
               "^Fatal error: the model is gone \\(QAVRbaSomething\\.cpp:42\\)\n$");
  EXPECT_DEATH(QAV_FATAL_ERROR("macro form"), "macro form \\(.*QAVDiagnosticsTest\\.cpp:[0-9]+\\)");
}

TEST(QAVDiagnostics, TraceChannelPrintsOnlyWhileEnabled) {
  QAVTraceChannel channel("QAVRbaSnapManipulator");
  EXPECT_FALSE(channel.IsEnabled());
  testing::internal::CaptureStdout();
  channel.Print("hidden %d", 1);
  channel.Enable();
  channel.Print("picked %d objects", 3);
  channel.Print("%s\n", "already ended");
  channel.Disable();
  channel.Print("hidden again");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "[QAVRbaSnapManipulator] picked 3 objects\n"
            "[QAVRbaSnapManipulator] already ended\n");

  qavtest::ScopedEnv env("QAVHOST_TRACE", "Other,QAVRbaRuler");
  EXPECT_TRUE(QAVTraceChannel("QAVRbaRuler").IsEnabled());
  EXPECT_FALSE(QAVTraceChannel("QAVRbaRul").IsEnabled());
}
