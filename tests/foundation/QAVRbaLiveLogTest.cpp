#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "QAVMutex.h"
#include "QAVRbaLiveLogSingleton.h"
#include "QAVTestSupport.h"

namespace {

class LiveLogTest : public qavtest::HostTest {};

// Reaches the protected constructor, to build a log without the singleton.
class OwnLog : public QAVRbaLiveLogSingleton {};

}  // namespace

TEST_F(LiveLogTest, LevelsDecideWhatIsStored) {
  QAVRbaLiveLogSingleton* log = QAVRbaLiveLogSingleton::Get();
  ASSERT_NE(log, nullptr);
  EXPECT_EQ(QAVRbaLiveLogSingleton::Get(), log);
  int level = -1;
  EXPECT_EQ(log->GetLevel(level), S_OK);
  EXPECT_EQ(level, 3);

  EXPECT_EQ(log->AddMessage(3, "at the level"), S_OK);
  EXPECT_EQ(log->AddMessage(4, "above the level"), E_FAIL);
  std::string text = "untouched";
  level = 99;
  EXPECT_EQ(log->GetMessage(1, level, text), E_FAIL);  // only one entry
  EXPECT_EQ(text, "untouched");
  EXPECT_EQ(level, 99);
  EXPECT_EQ(log->GetMessage(0, level, text), S_OK);
  EXPECT_EQ(level, 3);
  EXPECT_EQ(text, "at the level");

  // A lower level applies to later messages only; refused ones are not kept.
  EXPECT_EQ(log->SetLevel(0), S_OK);
  EXPECT_EQ(log->AddMessage(1, "refused"), E_FAIL);
  EXPECT_EQ(log->AddMessage(0, "error"), S_OK);
  EXPECT_EQ(log->AddMessage(-5, "more important"), S_OK);
  EXPECT_EQ(log->GetMessage(1, level, text), S_OK);
  EXPECT_EQ(text, "error");
  EXPECT_EQ(log->GetMessage(2, level, text), S_OK);
  EXPECT_EQ(level, -5);
  EXPECT_EQ(log->GetMessage(3, level, text), E_FAIL);

  // The test reset gives a fresh instance at level 3.
  ResetProcessState();
  EXPECT_EQ(QAVRbaLiveLogSingleton::Get()->GetMessage(0, level, text), E_FAIL);
  QAVRbaLiveLogSingleton::Get()->GetLevel(level);
  EXPECT_EQ(level, 3);
}

TEST_F(LiveLogTest, WithoutALockEverythingIsRefused) {
  Driver().FailMutexCreation(true);
  OwnLog log;
  Driver().FailMutexCreation(false);
  EXPECT_EQ(log.AddMessage(0, "lost"), E_FAIL);
  int level = 7;
  std::string text = "kept";
  EXPECT_EQ(log.GetMessage(0, level, text), E_FAIL);
  EXPECT_EQ(level, 7);
  EXPECT_EQ(text, "kept");
  EXPECT_EQ(log.SetLevel(5), S_OK);  // the level needs no lock
  EXPECT_EQ(log.GetLevel(level), S_OK);
  EXPECT_EQ(level, 5);
}

// Render threads write while the interactive thread reads: every message
// arrives once, each writer's in its order, and no read sees a torn entry.
// ThreadSanitizer checks the locking.
TEST_F(LiveLogTest, ConcurrentWritersAndReader) {
  QAVRbaLiveLogSingleton* log = QAVRbaLiveLogSingleton::Get();
  constexpr int kWriters = 4;
  constexpr int kPerWriter = 500;
  std::atomic<bool> done{false};
  std::vector<std::thread> writers;
  writers.reserve(kWriters);
  for (int w = 0; w < kWriters; ++w)
    writers.emplace_back([log, w] {
      for (int i = 0; i < kPerWriter; ++i)
        log->AddMessage(w, std::to_string(w) + ":" + std::to_string(i));
    });
  int badReads = 0;
  std::thread reader([&] {
    while (!done) {
      int level = -1;
      std::string text;
      for (std::size_t i = 0; log->GetMessage(i, level, text) == S_OK; ++i)
        if (text.empty() || text[0] - '0' != level) ++badReads;
    }
  });
  for (auto& t : writers)
    t.join();
  done = true;
  reader.join();
  EXPECT_EQ(badReads, 0);

  std::vector<int> next(kWriters, 0);
  int level = 0;
  std::string text;
  std::size_t count = 0;
  for (; log->GetMessage(count, level, text) == S_OK; ++count) {
    ASSERT_TRUE(level >= 0 && level < kWriters);
    EXPECT_EQ(text, std::to_string(level) + ":" + std::to_string(next[level]++));
  }
  EXPECT_EQ(count, static_cast<std::size_t>(kWriters * kPerWriter));
}
