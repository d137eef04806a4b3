// Strings, reference counting and meta-classes, event dispatch, pointer checks,
// fatal errors and trace channels.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVCallbackManager.h"
#include "QAVDiagnostics.h"
#include "QAVExtension.h"
#include "QAVHostDriver.h"
#include "QAVNotification.h"
#include "QAVRef.h"
#include "QAVString.h"
#include "QAVTestSupport.h"
#include "QAVTraceChannel.h"
#include "QAVUnicodeString.h"

namespace coretest {

class Animal : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  Animal() { ++alive; }
  ~Animal() override { --alive; }
  static inline int alive = 0;
};
class Dog : public Animal {
  QAV_DECLARE_CLASS
};
class Named : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  explicit Named(int) {}
};
// An interface that dogs get from outside their class: it counts barks for its
// dog, so its state must stay with the dog.
class Barker : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  Barker() { ++alive; }
  ~Barker() override { --alive; }
  int Bark() { return ++barks; }
  int barks = 0;
  static inline int alive = 0;
};

}  // namespace coretest

using coretest::Animal;
using coretest::Barker;
using coretest::Dog;
using coretest::Named;

QAV_IMPLEMENT_CLASS(Animal, QAVBaseUnknown, "TestFramework");
QAV_IMPLEMENT_CLASS(Dog, Animal, "TestFramework");
QAV_IMPLEMENT_CLASS(Named, QAVBaseUnknown, "TestFramework");
QAV_IMPLEMENT_CLASS(Barker, QAVBaseUnknown, "TestFramework");
QAV_REGISTER_EXTENSION(Barker, "Animal", Barker);

TEST(QAVString, SearchCaseMappingAndNumbers) {
  const QAVString a("Rendering");
  EXPECT_EQ(a.SearchSubString("der"), 3);
  EXPECT_EQ(a.SearchSubString("der", 4), -1);
  EXPECT_EQ(a.SearchSubString("ing", 6), 6);
  EXPECT_EQ(a.SubString(3, 100), QAVString("dering"));
  QAVUnicodeString s("Sky.HDR \xc3\x89t\xc3\xa9");  // bytes above 127 are kept
  s.ToLower();
  EXPECT_EQ(s, QAVUnicodeString("sky.hdr \xc3\x89t\xc3\xa9"));
  s.ToUpper();
  EXPECT_EQ(s, QAVUnicodeString("SKY.HDR \xc3\x89T\xc3\xa9"));

  // ConvertToNum follows scanf: a number at the start is enough.
  int i = -1;
  EXPECT_EQ(QAVString("12abc").ConvertToNum(&i, "%d"), 1);
  EXPECT_EQ(i, 12);
  EXPECT_EQ(QAVString("abc").ConvertToNum(&i, "%d"), 0);
  EXPECT_EQ(QAVString("").ConvertToNum(&i, "%d"), 0);
  double d = 0;
  EXPECT_EQ(QAVUnicodeString("-1.5e3").ConvertToNum(&d, "%le"), 1);
  EXPECT_EQ(d, -1500.0);
  EXPECT_EQ(QAVString::BuildFromNum(0.1), QAVString("0.1"));
}

TEST(QAVBaseUnknown, CountingMetaClassesQueriesAndFactories) {
  {
    auto dog = QAVMakeRef<Dog>();
    QAVRef<Animal> shared(dog.get());
    EXPECT_EQ(dog->GetRefCount(), 2u);
    QAVRef<Animal> moved = std::move(shared);
    EXPECT_EQ(dog->GetRefCount(), 2u);
    EXPECT_STREQ(dog->IsA(), "Dog");
    EXPECT_TRUE(dog->IsAKindOf("Animal"));
    EXPECT_TRUE(dog->IsAKindOf("QAVBaseUnknown"));
    EXPECT_FALSE(dog->IsAKindOf("Named"));
    EXPECT_EQ(Dog::MetaObject()->GetBase(), Animal::MetaObject());
    EXPECT_EQ(Dog::ClassId(), QAVMetaClass::ClassIdFromName("Dog"));
    EXPECT_NE(Dog::ClassId(), Animal::ClassId());
    EXPECT_TRUE(QAVQuery<Animal>(dog.get()));
    EXPECT_FALSE(QAVQuery<Named>(dog.get()));
    EXPECT_EQ(dog->GetRefCount(), 2u) << "the query's reference was released";
  }
  EXPECT_EQ(Animal::alive, 0);

  void* object = nullptr;
  ASSERT_EQ(QAVInstantiateComponent("Dog", Animal::ClassId(), &object), S_OK);
  auto created = QAVRef<QAVBaseUnknown>::Adopt(static_cast<QAVBaseUnknown*>(object));
  EXPECT_STREQ(created->IsA(), "Dog");
  EXPECT_EQ(created->GetRefCount(), 1u);
  // Without a default constructor there is no factory.
  EXPECT_EQ(QAVInstantiateComponent("Named", Named::ClassId(), &object), E_FAIL);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(QAVInstantiateComponent("Missing", Named::ClassId(), &object), E_FAIL);

  // A run-time meta-class is made once; the first base and framework stay.
  QAVMetaClass* first = QAVMetaClass::Create("RuntimeEvt", Animal::MetaObject(), "Fw");
  EXPECT_EQ(QAVMetaClass::Create("RuntimeEvt", nullptr, "Other"), first);
  EXPECT_EQ(QAVMetaClass::Find("RuntimeEvt"), first);
  EXPECT_TRUE(first->IsAKindOf("QAVBaseUnknown"));
  EXPECT_EQ(QAVMetaClass::Find("NoSuchClass"), nullptr);
}

TEST(QAVExtension, MadeOncePerObjectSharingItsReferencesAndDyingWithIt) {
  // Registered for Animal, so a Dog has it; a second registration is refused.
  EXPECT_FALSE(QAVExtension::Register("Animal", Barker::ClassId(),
                                      []() -> QAVBaseUnknown* { return nullptr; }));
  EXPECT_FALSE(QAVExtension::Register(nullptr, Barker::ClassId(),
                                      []() -> QAVBaseUnknown* { return nullptr; }));
  {
    auto dog = QAVMakeRef<Dog>();
    auto other = QAVMakeRef<Dog>();
    {
      QAVRef<Barker> barker = QAVQuery<Barker>(dog.get());
      ASSERT_TRUE(barker);
      EXPECT_EQ(dog->GetRefCount(), 2u) << "the extension's reference is the dog's";
      EXPECT_EQ(barker->Bark(), 1);
      EXPECT_EQ(barker->GetOuter(), dog.get());
      // Back from the extension to the dog's own classes.
      QAVRef<Animal> animal = QAVQuery<Animal>(barker.get());
      EXPECT_EQ(animal.get(), dog.get());
      EXPECT_EQ(dog->GetRefCount(), 3u);
    }
    EXPECT_EQ(dog->GetRefCount(), 1u);
    EXPECT_EQ(QAVQuery<Barker>(dog.get())->Bark(), 2) << "the same extension, its state kept";
    EXPECT_EQ(QAVQuery<Barker>(other.get())->Bark(), 1) << "each object has its own";
    EXPECT_EQ(Barker::alive, 2);
    EXPECT_FALSE(QAVQuery<Named>(dog.get()));
    // Other classes do not get it.
    auto named = QAVRef<Named>::Adopt(new Named(1));
    EXPECT_FALSE(QAVQuery<Barker>(named.get()));
  }
  EXPECT_EQ(Barker::alive, 0) << "extensions die with their objects";
  EXPECT_EQ(Animal::alive, 0);
}

TEST(QAVCallbackManager, DispatchOrderAndChangesDuringADispatch) {
  QAVHostDriver driver;
  driver.StartRecording();
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
  const QAVCallback second = manager->AddCallback("Evt", record("second"));
  EXPECT_EQ(manager->AddCallback(nullptr, record("none")), 0u);

  auto notification = QAVMakeRef<QAVNotification>();
  const std::string name = "Evt";  // event names compare by text, not by pointer
  manager->DispatchCallbacks(name.c_str(), notification.get(), &token);
  EXPECT_EQ(calls, (std::vector<std::string>{"first|Evt|QAVNotification|1",
                                             "second|Evt|QAVNotification|0"}));
  const auto dispatches = driver.GetJournal("dispatch");
  ASSERT_EQ(dispatches.size(), 1u);
  EXPECT_EQ(dispatches[0].name, "Evt");
  EXPECT_EQ(dispatches[0].detail, "QAVNotification");
  EXPECT_EQ(dispatches[0].source, manager.get());
  EXPECT_EQ(dispatches[0].data, &token);
  EXPECT_EQ(notification->GetRefCount(), 1u) << "a dispatch keeps no reference";

  // A subscriber removes itself and a later one and adds another: the removed
  // one is skipped at once, the added one waits for the next dispatch.
  QAVCallback third = 0;
  manager->AddCallback("Evt", [&](const char*, void*, QAVNotification*, void*, QAVCallback self) {
    calls.emplace_back("changer");
    EXPECT_TRUE(manager->RemoveCallback(self));
    EXPECT_TRUE(manager->RemoveCallback(third));
    manager->AddCallback("Evt", record("added"));
  });
  third = manager->AddCallback("Evt", record("third"));
  EXPECT_TRUE(manager->RemoveCallback(second));
  EXPECT_FALSE(manager->RemoveCallback(second));
  calls.clear();
  manager->DispatchCallbacks("Evt", nullptr, nullptr);
  manager->DispatchCallbacks("Evt", nullptr, nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"first|Evt|-|0", "changer", "first|Evt|-|0",
                                             "added|Evt|-|1"}));
  EXPECT_EQ(manager->GetCallbackCount("Evt"), 2);
  EXPECT_EQ(manager->GetCallbackCount("Other"), 1);
  EXPECT_EQ(manager->GetCallbackCount("None"), 0);

  // A dispatch from inside a callback of the same event, which removes a
  // subscriber the outer dispatch has yet to reach: neither calls it.
  calls.clear();
  QAVCallback last = 0;
  const QAVCallback nester = manager->AddCallback(
      "Nest", [&](const char*, void*, QAVNotification*, void*, QAVCallback self) {
        calls.emplace_back("outer");
        EXPECT_TRUE(manager->RemoveCallback(self));
        EXPECT_TRUE(manager->RemoveCallback(last));
        manager->DispatchCallbacks("Nest", nullptr, nullptr);
      });
  last = manager->AddCallback("Nest", record("last"));
  manager->DispatchCallbacks("Nest", nullptr, nullptr);
  EXPECT_EQ(calls, std::vector<std::string>{"outer"});
  EXPECT_FALSE(manager->RemoveCallback(nester));
  EXPECT_EQ(manager->GetCallbackCount("Nest"), 0);

  // Recording is the driver's to turn on: stopped, nothing is journalled.
  driver.StopRecording();
  manager->DispatchCallbacks("Evt", nullptr, nullptr);
  EXPECT_EQ(driver.GetJournal("dispatch").size(), 5u) << "the dispatches made while recording";
}

TEST(QAVDiagnostics, PointerCheckAndTraceChannel) {
  QAVHostDriver driver;
  driver.StartRecording();
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
  const auto reports = driver.GetJournal("pointer-check");
  ASSERT_EQ(reports.size(), 2u);
  EXPECT_EQ(reports[0].detail,
            "QAVRbaContextBarManager is NULL QAVRbaContextBarMappingTypeUVCmd::Activate");

  QAVTraceChannel channel("QAVRbaSnapManipulator");
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

TEST(QAVDiagnosticsDeathTest, FatalErrorNamesMessageFileAndLineThenEnds) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(QAVFatalError("the model is gone", "QAVRbaSomething.cpp", 42),
               "^Fatal error: the model is gone \\(QAVRbaSomething\\.cpp:42\\)\n$");
  EXPECT_DEATH(QAV_FATAL_ERROR("macro form"), "macro form \\(.*QAVCoreTest\\.cpp:[0-9]+\\)");
}
