#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "QAVDiagnostics.h"
#include "QAVMutex.h"
#include "QAVTestSupport.h"
#include "QAVTraceChannel.h"

TEST(QAVDiagnostics, PointerCheckWritesOneLineOnlyForNull) {
  QAVClearPointerCheckReports();
  int value = 0;
  testing::internal::CaptureStderr();
  EXPECT_TRUE(QAVCheckPointer("pValue", &value, "Owner::Operation"));
  void* QAVRbaContextBarManager = nullptr;
  EXPECT_FALSE(
      QAV_CHECK_POINTER(QAVRbaContextBarManager, "QAVRbaContextBarMappingTypeUVCmd::Activate"));
  EXPECT_FALSE(QAVCheckPointer(nullptr, nullptr, nullptr));
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err,
            "QAVRbaContextBarManager is NULL QAVRbaContextBarMappingTypeUVCmd::Activate\n"
            " is NULL \n");
  const auto reports = QAVGetPointerCheckReports();
  ASSERT_EQ(reports.size(), 2u);
  EXPECT_EQ(reports[0],
            "QAVRbaContextBarManager is NULL QAVRbaContextBarMappingTypeUVCmd::Activate");
  QAVClearPointerCheckReports();
  EXPECT_TRUE(QAVGetPointerCheckReports().empty());
}

TEST(QAVDiagnosticsDeathTest, FatalErrorNamesMessageFileAndLineThenEnds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(QAVFatalError("the model is gone", "QAVRbaSomething.cpp", 42),
               "^Fatal error: the model is gone \\(QAVRbaSomething\\.cpp:42\\)\n$");
  EXPECT_DEATH(QAV_FATAL_ERROR("macro form"), "macro form \\(.*QAVDiagnosticsTest\\.cpp:[0-9]+\\)");
}

TEST(QAVDiagnostics, MutexExcludesOtherThreadsAndCreationCanFail) {
  std::unique_ptr<QAVMutex> mutex(QAVMutex::Create(0, 1, 0));
  ASSERT_NE(mutex, nullptr);
  // A plain counter updated under the mutex from several threads: a broken
  // mutex loses increments (and ThreadSanitizer reports the race).
  long counter = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&] {
      for (int i = 0; i < 20000; ++i) {
        mutex->LockF();
        ++counter;
        mutex->UnlockF();
      }
    });
  for (auto& thread : threads)
    thread.join();
  EXPECT_EQ(counter, 80000);

  // A second thread waits while the mutex is held.
  std::atomic<bool> acquired{false};
  mutex->LockF();
  std::thread waiter([&] {
    mutex->LockF();
    acquired = true;
    mutex->UnlockF();
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_FALSE(acquired);
  mutex->UnlockF();
  waiter.join();
  EXPECT_TRUE(acquired);

  QAVMutex::SetCreationFailsForTests(true);
  EXPECT_EQ(QAVMutex::Create(0, 1, 0), nullptr);
  QAVMutex::SetCreationFailsForTests(false);
  std::unique_ptr<QAVMutex> again(QAVMutex::Create(0, 1, 0));
  EXPECT_NE(again, nullptr);
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
  qavtest::ScopedEnv all("QAVHOST_TRACE", "all");
  EXPECT_TRUE(QAVTraceChannel("Anything").IsEnabled());
}
