// Commands, their delayed destruction by the host's loop, idle subscriptions and
// command headers.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "QAVApplication.h"
#include "QAVCallbackManager.h"
#include "QAVCommand.h"
#include "QAVCommandHeader.h"
#include "QAVFillDictionary.h"
#include "QAVTestSupport.h"

// New commands belong to the host, which releases them; the analyzer cannot see
// that ownership and reports every `new` command as a leak.
// NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)

namespace commandtest {

// A command that counts its instances and its activations.
class CountingCmd : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  explicit CountingCmd(const char* name = "CountingCmd") : QAVCommand(nullptr, name, 1) { ++alive; }
  CountingCmd(const CountingCmd& other) : QAVCommand(other) { ++alive; }
  ~CountingCmd() override { --alive; }
  int Activate(QAVCommand* /*from*/, QAVNotification* /*notification*/) override {
    ++activations;
    return 0;
  }
  static inline int alive = 0;
  static inline int activations = 0;
};

// A parent that ends a child when it is destroyed itself.
class ParentCmd : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  ParentCmd() : QAVCommand(nullptr, "Parent"), child(new CountingCmd("Child")) {}
  ~ParentCmd() override { child->RequestDelayedDestruction(); }
  CountingCmd* child;
};

QAVCommand* CreateFromDictionary() { return new CountingCmd("FromDictionary"); }

}  // namespace commandtest

using commandtest::CountingCmd;
using commandtest::ParentCmd;

QAV_IMPLEMENT_CLASS(CountingCmd, QAVCommand, "TestFramework");
QAV_IMPLEMENT_CLASS(ParentCmd, QAVCommand, "TestFramework");

class QAVCommandTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    CountingCmd::alive = 0;
    CountingCmd::activations = 0;
  }
  static QAVApplication* App() { return QAVApplication::MainApplication(); }
  // The names of the commands destroyed since the test began, in order.
  std::vector<std::string> DestroyedNames() {
    std::vector<std::string> names;
    for (const QAVJournalEntry& entry : Driver().GetJournal("command-destroyed"))
      names.push_back(entry.name);
    return names;
  }
};

TEST_F(QAVCommandTest, DelayedDestructionHappensAtTheNextProcessingOnly) {
  auto* command = new CountingCmd("First");
  EXPECT_EQ(Driver().FindCommand("First"), command);
  Driver().Idle();
  EXPECT_EQ(CountingCmd::alive, 1) << "the host keeps a command until it asks to end";
  command->RequestDelayedDestruction();
  command->RequestDelayedDestruction();  // a second request changes nothing
  EXPECT_EQ(CountingCmd::alive, 1);
  EXPECT_EQ(Driver().GetPendingDestructionCount(), 1);
  EXPECT_EQ(Driver().Idle(), 1);
  EXPECT_EQ(CountingCmd::alive, 0);
  EXPECT_EQ(Driver().FindCommand("First"), nullptr);
  EXPECT_EQ(Driver().Idle(), 0);

  // Another holder keeps the command: only the host's reference goes.
  auto* shared = new CountingCmd("Shared");
  {
    QAVRef<QAVCommand> kept(shared);
    shared->RequestDelayedDestruction();
    Driver().Idle();
    EXPECT_EQ(CountingCmd::alive, 1);
    EXPECT_EQ(shared->GetRefCount(), 1u);
  }
  EXPECT_EQ(CountingCmd::alive, 0);

  // A destruction requested by a destructor while pending work runs is done in
  // the same pass.
  auto* parent = new ParentCmd;
  parent->RequestDelayedDestruction();
  EXPECT_EQ(Driver().Idle(), 2);
  EXPECT_EQ(CountingCmd::alive, 0);
  EXPECT_EQ(DestroyedNames(), (std::vector<std::string>{"First", "Shared", "Parent", "Child"}));
}

TEST_F(QAVCommandTest, CancelEndsTheCommandAndResetReleasesWhatTheHostKeeps) {
  auto* cancelled = new CountingCmd("Cancelled");
  EXPECT_EQ(cancelled->Cancel(nullptr, nullptr), 0);
  EXPECT_TRUE(cancelled->IsDestructionRequested());
  auto* forgotten = new CountingCmd("Forgotten");  // never ends by itself
  // A copy is another command, kept by the host as well.
  auto* copy = new CountingCmd(*forgotten);
  EXPECT_NE(copy->GetCallbackManager(), forgotten->GetCallbackManager());
  EXPECT_EQ(Driver().GetCommandCount(), 3);
  ResetProcessState();
  EXPECT_EQ(CountingCmd::alive, 0);
  EXPECT_EQ(Driver().GetCommandCount(), 0);
  std::vector<std::string> destroyed = DestroyedNames();
  std::sort(destroyed.begin(), destroyed.end());
  EXPECT_EQ(destroyed, (std::vector<std::string>{"Cancelled", "Forgotten", "Forgotten"}))
      << "the reset released what the host kept";
}

namespace {
struct IdleLog {
  std::vector<std::string> calls;
  QAVCommand* toRemove = nullptr;
};

void RecordIdle(QAVCommand* command, int kind, void* data) {
  auto* log = static_cast<IdleLog*>(data);
  log->calls.push_back(std::string(command ? command->GetName().c_str() : "none") + ":" +
                       std::to_string(kind));
}

void RecordAndUnsubscribe(QAVCommand* command, int kind, void* data) {
  RecordIdle(command, kind, data);
  auto* log = static_cast<IdleLog*>(data);
  QAVApplication::MainApplication()->RemoveSubscribe(kind, command);
  if (log->toRemove) QAVApplication::MainApplication()->RemoveSubscribe(kind, log->toRemove);
  QAVApplication::MainApplication()->Subscribe(QAVApplication::Idle, nullptr, data, RecordIdle);
}
}  // namespace

TEST_F(QAVCommandTest, IdleSubscribersRunAfterDestructionsUntilRemoved) {
  IdleLog log;
  auto* a = new CountingCmd("A");
  auto* b = new CountingCmd("B");
  EXPECT_EQ(App()->Subscribe(1, a, &log, RecordIdle), E_INVALIDARG);
  EXPECT_EQ(App()->Subscribe(QAVApplication::Idle, a, &log, nullptr), E_INVALIDARG);
  ASSERT_EQ(App()->Subscribe(QAVApplication::Idle, a, &log, RecordAndUnsubscribe), S_OK);
  ASSERT_EQ(App()->Subscribe(QAVApplication::Idle, b, &log, RecordIdle), S_OK);
  EXPECT_TRUE(log.calls.empty()) << "nothing runs before the loop's idle moment";

  // a removes b and itself and adds a new subscriber: b is skipped, the new one
  // waits for the next pass.
  log.toRemove = b;
  EXPECT_EQ(Driver().Idle(), 1);
  EXPECT_EQ(log.calls, std::vector<std::string>{"A:2"});
  EXPECT_FALSE(App()->IsSubscribed(QAVApplication::Idle, a));
  Driver().Idle();
  Driver().Idle();
  EXPECT_EQ(log.calls, (std::vector<std::string>{"A:2", "none:2", "none:2"}));
  EXPECT_EQ(App()->RemoveSubscribe(QAVApplication::Idle, nullptr), 1);

  // Subscribing twice makes two subscriptions; a destroyed command loses its
  // subscriptions before any idle call.
  App()->Subscribe(QAVApplication::Idle, b, &log, RecordIdle);
  App()->Subscribe(QAVApplication::Idle, b, &log, RecordIdle);
  EXPECT_EQ(App()->GetSubscriptionCount(QAVApplication::Idle), 2);
  b->RequestDelayedDestruction();
  log.calls.clear();
  EXPECT_EQ(Driver().Idle(), 1);
  EXPECT_TRUE(log.calls.empty());
  EXPECT_EQ(App()->GetSubscriptionCount(QAVApplication::Idle), 0);
}

TEST_F(QAVCommandTest, HeadersStartTheirCommandThroughTheFactoryOfItsClass) {
  ASSERT_TRUE(QAVFillDictionary::Register("FactoryCmd", &commandtest::CreateFromDictionary));
  EXPECT_FALSE(QAVFillDictionary::Register("FactoryCmd", &commandtest::CreateFromDictionary));
  QAVCommandHeader* header = QAVCommandHeader::Create("StartIt", "FactoryCmd");
  ASSERT_NE(header, nullptr);
  EXPECT_EQ(QAVCommandHeader::Create("StartIt", "CountingCmd"), nullptr) << "name taken";
  EXPECT_EQ(QAVCommandHeader::GetHeaderFromList("StartIt"), header);

  QAVCommand* started = header->StartCommand();
  ASSERT_NE(started, nullptr);
  EXPECT_EQ(started->GetName(), "FromDictionary");
  EXPECT_EQ(CountingCmd::activations, 1);
  EXPECT_EQ(header->GetStartCount(), 1);
  EXPECT_EQ(Driver().FindCommand("FromDictionary"), started) << "kept by the host";

  // Without a dictionary entry the meta-class factory of the class is used; a
  // class that is no command starts nothing.
  QAVCommand* byMeta = QAVCommandHeader::Create("ByMeta", "CountingCmd")->StartCommand();
  ASSERT_NE(byMeta, nullptr);
  EXPECT_STREQ(byMeta->IsA(), "CountingCmd");
  EXPECT_EQ(CountingCmd::activations, 2);
  EXPECT_EQ(QAVCommandHeader::Create("NotACommand", "QAVCallbackManager")->StartCommand(), nullptr);
  EXPECT_EQ(QAVCommandHeader::Create("Missing", "NoSuchCmd")->StartCommand(), nullptr);
  EXPECT_EQ(QAVCommandHeader::GetHeaderFromList("Missing")->GetStartCount(), 0);

  ResetProcessState();
  EXPECT_EQ(QAVCommandHeader::GetHeaderCount(), 0);
  EXPECT_EQ(CountingCmd::alive, 0);
  EXPECT_NE(QAVFillDictionary::Find("FactoryCmd"), nullptr) << "load-time registrations stay";
}

// NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
