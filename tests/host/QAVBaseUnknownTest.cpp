#include <gtest/gtest.h>

#include "QAVBaseUnknown.h"
#include "QAVRef.h"

namespace basetest {

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

}  // namespace basetest

using basetest::Animal;
using basetest::Dog;
using basetest::Named;

QAV_IMPLEMENT_CLASS(Animal, QAVBaseUnknown, "TestFramework");
QAV_IMPLEMENT_CLASS(Dog, Animal, "TestFramework");
QAV_IMPLEMENT_CLASS(Named, QAVBaseUnknown, "TestFramework");

TEST(QAVBaseUnknown, ReferenceCountingDestroysAtLastRelease) {
  {
    auto dog = QAVMakeRef<Dog>();
    EXPECT_EQ(dog->GetRefCount(), 1u);
    QAVRef<Animal> shared(dog.get());
    EXPECT_EQ(dog->GetRefCount(), 2u);
    QAVRef<Animal> moved = std::move(shared);
    EXPECT_FALSE(shared);
    EXPECT_EQ(dog->GetRefCount(), 2u);
    EXPECT_EQ(Animal::alive, 1);
  }
  EXPECT_EQ(Animal::alive, 0);
}

TEST(QAVBaseUnknown, MetaClassNamesBasesAndKinds) {
  auto dog = QAVMakeRef<Dog>();
  EXPECT_STREQ(dog->IsA(), "Dog");
  EXPECT_STREQ(Dog::ClassName(), "Dog");
  EXPECT_TRUE(dog->IsAKindOf("Animal"));
  EXPECT_TRUE(dog->IsAKindOf("QAVBaseUnknown"));
  EXPECT_FALSE(dog->IsAKindOf("Named"));
  EXPECT_EQ(Dog::MetaObject()->GetBase(), Animal::MetaObject());
  EXPECT_STREQ(Dog::MetaObject()->GetFramework(), "TestFramework");
  EXPECT_NE(Dog::ClassId(), Animal::ClassId());
  EXPECT_EQ(Dog::ClassId(), QAVMetaClass::ClassIdFromName("Dog"));
}

TEST(QAVBaseUnknown, RunTimeMetaClassIsCreatedOnceFromNameAndBase) {
  QAVMetaClass* first = QAVMetaClass::Create("RuntimeEvt", Animal::MetaObject(), "Fw");
  QAVMetaClass* again = QAVMetaClass::Create("RuntimeEvt", nullptr, "Other");
  EXPECT_EQ(first, again);
  EXPECT_EQ(QAVMetaClass::Find("RuntimeEvt"), first);
  EXPECT_TRUE(first->IsAKindOf("QAVBaseUnknown"));
  EXPECT_EQ(QAVMetaClass::Find("NoSuchClass"), nullptr);
}

TEST(QAVBaseUnknown, QueriesAndFactoriesByName) {
  auto dog = QAVMakeRef<Dog>();
  EXPECT_TRUE(QAVQuery<Animal>(dog.get()));
  EXPECT_EQ(dog->GetRefCount(), 1u);  // the query's reference was released
  EXPECT_FALSE(QAVQuery<Named>(dog.get()));

  void* object = nullptr;
  ASSERT_EQ(QAVInstantiateComponent("Dog", Animal::ClassId(), &object), S_OK);
  auto created = QAVRef<QAVBaseUnknown>::Adopt(static_cast<QAVBaseUnknown*>(object));
  EXPECT_STREQ(created->IsA(), "Dog");
  EXPECT_EQ(created->GetRefCount(), 1u);
  EXPECT_EQ(QAVInstantiateComponent("Named", Named::ClassId(), &object), E_FAIL);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(QAVInstantiateComponent("Missing", Named::ClassId(), &object), E_FAIL);
}
