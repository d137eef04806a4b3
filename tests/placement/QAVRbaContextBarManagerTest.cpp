// The context bar manager: the two mapping-type tables, the observer protocol
// with its reference counts, the deliberate E_FAIL answers, the relays, the
// display calls to the host, and the singleton's end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAVIAfrCtxBarManager.h"
#include "QAVMappingRecorder.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"
#include "QAVTestSupport.h"

namespace {

using MT = QAVIRbaMappingObservable;

class ContextBarManagerTest : public qavtest::HostTest {
 protected:
  // What the host's context-bar manager was asked since the last call.
  std::vector<std::string> HostCalls() {
    std::vector<std::string> calls;
    for (const QAVJournalEntry& e : Driver().GetJournal("ctx-bar"))
      if (e.name != "fill") calls.push_back(e.name + " " + e.detail);
    Driver().ClearJournal();
    return calls;
  }
  static QAVRbaContextBarManager& Manager() {
    return *QAVRbaContextBarManager::GetContextBarManager();
  }
};

TEST_F(ContextBarManagerTest, MappingTypeTablesConversionAndNormalisation) {
  // Bar types to model types: cylindrical and cubical swap places on purpose.
  const int expected[] = {
      MT::Planar,  MT::Spherical, MT::FiniteCylindrical, MT::InfiniteCylindrical,
      MT::Cubical, MT::UV};
  for (int bar = 0; bar < 6; ++bar)
    EXPECT_EQ(QAVIRbaMappingModelUpdater::ToMappingType(bar), expected[bar]) << bar;
  for (int outside : {-1, 6, 8, 1000})
    EXPECT_EQ(QAVIRbaMappingModelUpdater::ToMappingType(outside), MT::Planar) << outside;

  EXPECT_EQ(static_cast<int>(Manager().GetCurrentMappingType()), -1) << "nothing known yet";
  const std::vector<std::pair<int, int>> normalised = {{1, 1}, {2, 2}, {3, 3}, {6, 6},  {8, 8},
                                                       {7, 0}, {4, 0}, {5, 0}, {-1, 0}, {9, 0}};
  for (const auto& [given, stored] : normalised) {
    Manager().SetCurrentMappingType(given);
    EXPECT_EQ(static_cast<int>(Manager().GetCurrentMappingType()), stored) << given;
  }
}

TEST_F(ContextBarManagerTest, ObserverProtocolKeepsReferenceCountsAndTheLastType) {
  auto object = QAVMakeRef<QAVMappingRecorder>();
  const unsigned long before = object->GetRefCount();

  Manager().SetRelatedObject(object.get());
  EXPECT_EQ(object->Take(), std::vector<std::string>{"AddObserver"});
  ASSERT_EQ(object->observers.size(), 1u);
  EXPECT_EQ(Manager().GetRelatedObject(), object.get());
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::Cubical) << "read from the observable";
  const unsigned long held = object->GetRefCount();
  EXPECT_EQ(held, before + 2) << "the object and its observable";

  // The same object again: removed and added once each, counts unchanged.
  Manager().SetRelatedObject(object.get());
  EXPECT_EQ(object->Take(), (std::vector<std::string>{"RemoveObserver", "AddObserver"}));
  EXPECT_EQ(object->GetRefCount(), held);

  // Null: the observer leaves, the object is let go, the last type stays.
  object->type = MT::UV;
  Manager().SetRelatedObject(nullptr);
  EXPECT_EQ(object->Take(), std::vector<std::string>{"RemoveObserver"});
  EXPECT_TRUE(object->observers.empty());
  EXPECT_EQ(object->GetRefCount(), before);
  EXPECT_EQ(Manager().GetRelatedObject(), nullptr);
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::Cubical);
  // The own observer is there even without an object: a later object gets it.
  Manager().SetRelatedObject(nullptr);
  Manager().SetRelatedObject(object.get());
  EXPECT_EQ(object->Take(), std::vector<std::string>{"AddObserver"});
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::UV);

  // An object without an observable: held, but not observed; the type stays.
  auto plain = QAVMakeRef<QAVMappingRecorder>(false, true);
  Manager().SetRelatedObject(plain.get());
  EXPECT_EQ(plain->GetRefCount(), 2u);
  EXPECT_TRUE(plain->Take().empty());
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::UV);
  HostCalls();
  EXPECT_EQ(Manager().UpdateMappingType(), E_FAIL);
  EXPECT_TRUE(HostCalls().empty()) << "no refresh without an observable";

  QAVRbaContextBarManager::DestroyContextBarManager();
  EXPECT_EQ(plain->GetRefCount(), 1u);
  EXPECT_EQ(object->GetRefCount(), before);
}

TEST_F(ContextBarManagerTest, TypeChangesRelaysAndTheObserverAnswers) {
  auto object = QAVMakeRef<QAVMappingRecorder>();
  // Without an observable a type is stored and nothing else happens.
  Manager().SetCurrentMappingType(MT::InfiniteCylindrical);
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::InfiniteCylindrical);
  Manager().makeUpdateAllObserversMappingType();  // nothing to relay to

  Manager().SetRelatedObject(object.get());
  QAVIRbaMappingObserver* own = object->observers.at(0);
  object->Take();
  HostCalls();
  // Stored unchecked, set on the observable, told to everyone with the manager
  // as sender; the manager, an observer, re-reads it and refreshes the bar.
  Manager().SetCurrentMappingType(static_cast<MT::MappingType>(7));
  EXPECT_EQ(object->Take(),
            (std::vector<std::string>{"SetMappingType 7", "UpdateAllObserversMappingType"}));
  EXPECT_EQ(object->senders.back(), own);
  EXPECT_EQ(static_cast<int>(Manager().GetCurrentMappingType()), 7);
  EXPECT_EQ(HostCalls(), std::vector<std::string>{"refresh '' repaint=1"});

  object->type = MT::Spherical;
  EXPECT_EQ(Manager().UpdateMappingType(), S_OK);
  EXPECT_EQ(Manager().GetCurrentMappingType(), MT::Spherical);
  EXPECT_EQ(HostCalls(), std::vector<std::string>{"refresh '' repaint=1"});
  Driver().RemoveContextBarManager(true);
  EXPECT_EQ(Manager().UpdateMappingType(), S_OK) << "also without the host's manager";
  Driver().RemoveContextBarManager(false);

  Manager().makeUpdateAllObserversPosAndOrientation();
  Manager().makeUpdateAllObserversMappingType();
  Manager().makeUpdateAllObserversOtherMappingAttributes();
  EXPECT_EQ(object->Take(), (std::vector<std::string>{"UpdateAllObserversPosAndOrientation",
                                                      "UpdateAllObserversMappingType",
                                                      "UpdateAllObserversOtherMappingAttributes"}));
  for (QAVIRbaMappingObserver* sender : object->senders)
    EXPECT_EQ(sender, own);

  // Through the observer interface: only the mapping type matters to the bar;
  // the three E_FAIL answers are deliberate.
  QAVRef<QAVIRbaMappingObserver> observer = QAVQuery<QAVIRbaMappingObserver>(&Manager());
  ASSERT_TRUE(observer);
  EXPECT_EQ(observer.get(), own);
  EXPECT_EQ(observer->UpdatePosAndOrientation(), S_OK);
  EXPECT_EQ(observer->UpdateInitialPos(), S_OK);
  EXPECT_EQ(observer->ShowManipulatorRep(), S_OK);
  EXPECT_EQ(observer->HideManipulatorRep(), S_OK);
  EXPECT_EQ(observer->AlignWithCameraView(), S_OK);
  EXPECT_EQ(observer->UpdateOtherMappingAttributes(), E_FAIL);
  EXPECT_EQ(observer->UpdatePanel(), E_FAIL);
  EXPECT_EQ(Manager().ToggleDecalUVCropMode(), E_FAIL);
  EXPECT_EQ(Manager().ShowManipulatorRepWithRobot(), S_OK);
  EXPECT_EQ(Manager().HideManipulatorRepWithRobot(), S_OK);
}

TEST_F(ContextBarManagerTest, DisplayCallsAndTheSingletonsEnd) {
  HostCalls();
  Manager().InitContextualBar("QAVRbaUIContextBarMaterialComponent");
  Manager().updateDisplay();
  Manager().SetFadeEffect(1);
  Manager().DestroyContextualBar("QAVRbaUIContextBarMaterialComponent");
  EXPECT_EQ(HostCalls(),
            (std::vector<std::string>{"register QAVRbaUIContextBarMaterialComponent All_CtxId",
                                      "refresh '' repaint=0", "refresh '' repaint=1", "fade 1",
                                      "unregister QAVRbaUIContextBarMaterialComponent All_CtxId",
                                      "refresh '' repaint=0"}));
  Driver().RemoveContextBarManager(true);
  Manager().InitContextualBar("QAVRbaUIContextBarMaterialComponent");
  Manager().updateDisplay();
  Manager().SetFadeEffect(0);
  EXPECT_TRUE(HostCalls().empty());
  Driver().RemoveContextBarManager(false);

  auto object = QAVMakeRef<QAVMappingRecorder>();
  Manager().SetRelatedObject(object.get());
  QAVRbaContextBarManager* first = &Manager();
  object->Take();
  QAVRbaContextBarManager::DestroyContextBarManager();
  EXPECT_EQ(object->Take(), std::vector<std::string>{"RemoveObserver"});
  EXPECT_EQ(object->GetRefCount(), 1u);
  QAVRbaContextBarManager::DestroyContextBarManager();  // harmless
  QAVRbaContextBarManager* fresh = QAVRbaContextBarManager::GetContextBarManager();
  ASSERT_NE(fresh, nullptr);
  EXPECT_EQ(static_cast<int>(fresh->GetCurrentMappingType()), -1);
  EXPECT_EQ(fresh->GetRelatedObject(), nullptr);
  (void)first;
}

}  // namespace
