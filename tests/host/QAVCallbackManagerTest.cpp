// Dispatch of named events through a callback manager.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVCallbackManager.h"
#include "QAVNotification.h"
#include "QAVRef.h"

TEST(QAVCallbackManager, DispatchesInSubscriptionOrderToSubscribersOfThatEventOnly) {
  auto manager = QAVMakeRef<QAVCallbackManager>();
  std::vector<std::string> calls;
  auto record = [&calls](const char* tag) {
    return [&calls, tag](const char* event, void* data, QAVNotification* notification,
                         void* clientData, QAVCallback) {
      calls.push_back(std::string(tag) + "|" + event + "|" +
                      (notification ? notification->IsA() : "-") + "|" +
                      std::to_string(data == clientData));
    };
  };
  int token = 0;
  manager->AddCallback("Evt", record("first"), &token);
  manager->AddCallback("Other", record("other"));
  manager->AddCallback("Evt", record("second"));
  EXPECT_EQ(manager->AddCallback(nullptr, record("none")), 0u);
  EXPECT_EQ(manager->GetCallbackCount("Evt"), 2);

  auto notification = QAVMakeRef<QAVNotification>();
  // Event names compare by text, not by pointer.
  const std::string name = "Evt";
  manager->DispatchCallbacks(name.c_str(), notification.get(), &token);
  EXPECT_EQ(calls, (std::vector<std::string>{"first|Evt|QAVNotification|1",
                                             "second|Evt|QAVNotification|0"}));
  ASSERT_EQ(manager->GetDispatches().size(), 1u);
  EXPECT_EQ(manager->GetDispatches()[0].notificationClass, "QAVNotification");
  EXPECT_EQ(manager->GetDispatches()[0].data, &token);
  EXPECT_EQ(notification->GetRefCount(), 1u) << "a dispatch keeps no reference";
}

TEST(QAVCallbackManager, SubscriptionsMayChangeDuringADispatch) {
  auto manager = QAVMakeRef<QAVCallbackManager>();
  std::vector<std::string> calls;
  QAVCallback second = 0;
  QAVCallback third = 0;
  // The first subscriber removes itself and the second, and adds a fourth.
  manager->AddCallback("Evt", [&](const char*, void*, QAVNotification*, void*, QAVCallback self) {
    calls.emplace_back("first");
    EXPECT_TRUE(manager->RemoveCallback(self));
    EXPECT_TRUE(manager->RemoveCallback(second));
    manager->AddCallback("Evt", [&](const char*, void*, QAVNotification*, void*, QAVCallback) {
      calls.emplace_back("fourth");
    });
  });
  second = manager->AddCallback("Evt", [&](const char*, void*, QAVNotification*, void*,
                                           QAVCallback) { calls.emplace_back("second"); });
  third = manager->AddCallback("Evt", [&](const char*, void*, QAVNotification*, void*,
                                          QAVCallback) { calls.emplace_back("third"); });

  manager->DispatchCallbacks("Evt", nullptr, nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"first", "third"}));
  calls.clear();
  manager->DispatchCallbacks("Evt", nullptr, nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"third", "fourth"}));
  EXPECT_TRUE(manager->RemoveCallback(third));
  EXPECT_FALSE(manager->RemoveCallback(third));
  EXPECT_EQ(manager->GetCallbackCount("Evt"), 1);
}
