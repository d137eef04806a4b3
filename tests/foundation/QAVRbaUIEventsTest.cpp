// The named UI events and the notification records sent with them.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

#include "QAVCallbackManager.h"
#include "QAVFrmLayout.h"
#include "QAVMetaClass.h"
#include "QAVNotification.h"
#include "QAVPathElement.h"
#include "QAVRbaFloatConnexionModifyNotification.h"
#include "QAVRbaSnapManipulatorNotification.h"
#include "QAVRbaUIEvents.h"
#include "QAVRbaUIFileDropNotification.h"
#include "QAVRef.h"
#include "QAVStkStickerBBoxModified.h"
#include "QAVTestSupport.h"

namespace eventstest {

// A model object that counts its instances, to see references come and go.
class Tracked : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  Tracked() { ++alive; }
  ~Tracked() override { --alive; }
  static inline int alive = 0;
};

// A file drop record that counts its instances.
class CountedDrop : public QAVRbaUIFileDropNotification {
 public:
  explicit CountedDrop(const QAVUnicodeString& path) : QAVRbaUIFileDropNotification(path) {
    ++alive;
  }
  ~CountedDrop() override { --alive; }
  static inline int alive = 0;
};

constexpr GUID kIid = {0x12345678, 0x9abc, 0xdef0, {1, 2, 3, 4, 5, 6, 7, 8}};

}  // namespace eventstest

using eventstest::CountedDrop;
using eventstest::kIid;
using eventstest::Tracked;

QAV_IMPLEMENT_CLASS(Tracked, QAVBaseUnknown, "TestFramework");

using QAVRbaUIEventsTest = qavtest::HostTest;

TEST(QAVRbaUIEvents, EveryAccessorNamesItsOwnNotificationMetaClassOnce) {
  using Accessor = const char* (*)();
  struct Row {
    Accessor accessor;
    const char* name;
  };
  const std::array<Row, 26> rows = {{
      {QAVRbaUIEvents::AMBIENCE_CHANGED, "QAVRbaUIEventsAMBIENCE_CHANGEDEvt"},
      {QAVRbaUIEvents::AMBIENCE_CREATED, "QAVRbaUIEventsAMBIENCE_CREATEDEvt"},
      {QAVRbaUIEvents::AMBIENCE_DELETED, "QAVRbaUIEventsAMBIENCE_DELETEDEvt"},
      {QAVRbaUIEvents::AMBIENCE_MODIFIED, "QAVRbaUIEventsAMBIENCE_MODIFIEDEvt"},
      {QAVRbaUIEvents::AMBIENCE_WORKBENCH_STACKED, "QAVRbaUIEventsAMBIENCE_WORKBENCH_STACKEDEvt"},
      {QAVRbaUIEvents::ANIMATION_DURATION_CHANGED, "QAVRbaUIEventsANIMATION_DURATION_CHANGEDEvt"},
      {QAVRbaUIEvents::ANIMATION_FRAMERATE_CHANGED, "QAVRbaUIEventsANIMATION_FRAMERATE_CHANGEDEvt"},
      {QAVRbaUIEvents::CAMERA_ANIMATION_CREATED, "QAVRbaUIEventsCAMERA_ANIMATION_CREATEDEvt"},
      {QAVRbaUIEvents::CAMERA_APERTURE_MODIFIED, "QAVRbaUIEventsCAMERA_APERTURE_MODIFIEDEvt"},
      {QAVRbaUIEvents::CAMERA_SPEED_MODIFIED, "QAVRbaUIEventsCAMERA_SPEED_MODIFIEDEvt"},
      {QAVRbaUIEvents::CAMERA_AUTOFOCUS_MODIFIED, "QAVRbaUIEventsCAMERA_AUTOFOCUS_MODIFIEDEvt"},
      {QAVRbaUIEvents::CAMERA_ISO_MODIFIED, "QAVRbaUIEventsCAMERA_ISO_MODIFIEDEvt"},
      {QAVRbaUIEvents::CAMERA_ZOOM_MODE_MODIFIED, "QAVRbaUIEventsCAMERA_ZOOM_MODE_MODIFIEDEvt"},
      {QAVRbaUIEvents::EXPOSURE_APERTURE_MODIFIED, "QAVRbaUIEventsEXPOSURE_APERTURE_MODIFIEDEvt"},
      {QAVRbaUIEvents::CONTEXT_BAR_BEGIN_ACTION, "QAVRbaUIEventsCONTEXT_BAR_BEGIN_ACTIONEvt"},
      {QAVRbaUIEvents::CONTEXT_BAR_END_ACTION, "QAVRbaUIEventsCONTEXT_BAR_END_ACTIONEvt"},
      {QAVRbaUIEvents::SCENE_CHANGED, "QAVRbaUIEventsSCENE_CHANGEDEvt"},
      {QAVRbaUIEvents::TEXTURE_DROPPED_BEGIN, "QAVRbaUIEventsTEXTURE_DROPPED_BEGINEvt"},
      {QAVRbaUIEvents::TEXTURE_DROPPED, "QAVRbaUIEventsTEXTURE_DROPPEDEvt"},
      {QAVRbaUIEvents::VOODOO_MODIFIED, "QAVRbaUIEventsVOODOO_MODIFIEDEvt"},
      {QAVRbaUIEvents::VOODOO_EV_MODIFIED, "QAVRbaUIEventsVOODOO_EV_MODIFIEDEvt"},
      {QAVRbaUIEvents::VOODOO_APERTURE_MODIFIED, "QAVRbaUIEventsVOODOO_APERTURE_MODIFIEDEvt"},
      {QAVRbaUIEvents::VOODOO_SPEED_MODIFIED, "QAVRbaUIEventsVOODOO_SPEED_MODIFIEDEvt"},
      {QAVRbaUIEvents::VOODOO_FOCAL_MODIFIED, "QAVRbaUIEventsVOODOO_FOCAL_MODIFIEDEvt"},
      {QAVRbaUIEvents::VOODOO_FOCUSDISTANCE_MODIFIED,
       "QAVRbaUIEventsVOODOO_FOCUSDISTANCE_MODIFIEDEvt"},
      {QAVRbaUIEvents::VOODOO_ROLL_MODIFIED, "QAVRbaUIEventsVOODOO_ROLL_MODIFIEDEvt"},
  }};

  // Nothing is created before the first call (this event is sent by no code of
  // the library, and only this test asks for it).
  EXPECT_EQ(QAVMetaClass::Find("QAVRbaUIEventsVOODOO_FOCAL_MODIFIEDEvt"), nullptr);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const char* first = row.accessor();
    ASSERT_NE(first, nullptr);
    EXPECT_STREQ(first, row.name);
    EXPECT_EQ(row.accessor(), first) << "the same pointer on every call";
    const QAVMetaClass* meta = QAVMetaClass::Find(row.name);
    ASSERT_NE(meta, nullptr);
    EXPECT_EQ(meta->GetName(), first);
    EXPECT_EQ(meta->GetBase(), QAVNotification::MetaObject());
    EXPECT_STREQ(meta->GetFramework(), "RenderingBaseUI");
  }
  EXPECT_TRUE(QAVMakeRef<QAVRbaUIEvents>()->IsAKindOf("QAVEventSubscriber"));
}

TEST(QAVRbaUIEvents, TheFirstCallsFromManyThreadsAgreeOnOnePointer) {
  // Under CTest every test has a process of its own: the threads race to create
  // the event.
  std::vector<const char*> seen(8, nullptr);
  std::vector<std::thread> threads;
  threads.reserve(seen.size());
  for (auto& slot : seen)
    threads.emplace_back([&slot] { slot = QAVRbaUIEvents::VOODOO_ROLL_MODIFIED(); });
  for (auto& thread : threads)
    thread.join();
  for (const char* name : seen)
    EXPECT_EQ(name, seen[0]);
  EXPECT_STREQ(seen[0], "QAVRbaUIEventsVOODOO_ROLL_MODIFIEDEvt");
}

TEST(QAVRbaUIEvents, FloatConnexionAndStickerRecordsKeepTheirValuesAcrossCloning) {
  {
    auto object = QAVMakeRef<Tracked>();
    auto handle = QAVMakeRef<Tracked>();
    auto fromHandle = QAVMakeRef<QAVRbaFloatConnexionModifyNotification>(
        object.get(), QAVBaseUnknown_var(handle.get()), kIid, QAVAttributValue);
    EXPECT_EQ(fromHandle->GetPrevious(), 0.0);
    EXPECT_EQ(fromHandle->GetNext(), 0.0);
    EXPECT_TRUE(fromHandle->GetName().IsEmpty());
    EXPECT_EQ(handle->GetRefCount(), 1u) << "the handle is not kept";
    EXPECT_EQ(object->GetRefCount(), 2u) << "the object is held";

    auto named = QAVMakeRef<QAVRbaFloatConnexionModifyNotification>(QAVString("Intensity"),
                                                                    object.get(), kIid, 1.5, -2.25);
    auto clone = QAVRef<QAVModelNotification>::Adopt(named->Clone());
    auto* copy = dynamic_cast<QAVRbaFloatConnexionModifyNotification*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_STREQ(copy->IsA(), "QAVRbaFloatConnexionModifyNotification");
    EXPECT_NE(copy, named.get());
    EXPECT_EQ(copy->GetName(), "Intensity");
    EXPECT_EQ(copy->GetObject(), object.get());
    EXPECT_EQ(copy->GetInterfaceIID(), kIid);
    EXPECT_EQ(copy->GetPrevious(), 1.5);
    EXPECT_EQ(copy->GetNext(), -2.25);
    EXPECT_EQ(QAVRbaFloatConnexionModifyNotification::MetaObject()->GetBase(),
              QAVRbaModifyParameterNotification::MetaObject());

    // The sticker record keeps the handle and its own copy of the path.
    auto root = QAVMakeRef<Tracked>();
    QAVPathElement path(root.get());
    path.AddChildElement(object.get());
    auto sticker = QAVMakeRef<QAVStkStickerBBoxModified>(
        object.get(), QAVBaseUnknown_var(handle.get()), kIid, QAVAttributGeometry, path);
    path.Clear();
    EXPECT_EQ(handle->GetRefCount(), 2u);
    ASSERT_EQ(sticker->GetPathElement().GetSize(), 2);
    EXPECT_EQ(sticker->GetPathElement().GetRoot(), root.get());
    EXPECT_EQ(sticker->GetPathElement().GetLeaf(), object.get());

    auto stickerClone = QAVRef<QAVModelNotification>::Adopt(sticker->Clone());
    auto* stickerCopy = dynamic_cast<QAVStkStickerBBoxModified*>(stickerClone.get());
    ASSERT_NE(stickerCopy, nullptr);
    EXPECT_EQ(stickerCopy->GetObject(), object.get());
    EXPECT_EQ(stickerCopy->GetHandle().get(), handle.get());
    EXPECT_EQ(handle->GetRefCount(), 3u) << "the clone holds the handle too";
    EXPECT_EQ(stickerCopy->GetInterfaceIID(), kIid);
    EXPECT_EQ(stickerCopy->GetAttributKind(), QAVAttributGeometry);
    EXPECT_TRUE(stickerCopy->GetPathElement().IsSamePath(sticker->GetPathElement()));
  }
  EXPECT_EQ(Tracked::alive, 0) << "records release the objects they hold";
}

TEST(QAVRbaUIEvents, SnapAndFileDropRecordsCarryTheirFieldsAndFlags) {
  const QAVMathVector normal(0.0, 0.0, 1.0);
  const QAVMathVector origin(10.5, -3.0, 7.25);
  auto snap = QAVMakeRef<QAVRbaSnapManipulatorNotification>(3, normal, origin);
  EXPECT_EQ(snap->GetEventName(), 3);
  EXPECT_EQ(snap->GetNormal(), normal);
  EXPECT_EQ(snap->GetOrigin(), origin);
  EXPECT_EQ(snap->GetFlag(), -1);
  EXPECT_EQ(QAVRbaSnapManipulatorNotification::MetaObject()->GetBase(),
            QAVNotification::MetaObject());

  QAVUnicodeString path("C:\\Textures\\Wood \xc3\xa9rable.png");
  auto drop = QAVMakeRef<QAVRbaUIFileDropNotification>(path);
  path = "changed";
  EXPECT_EQ(drop->FilePath, QAVUnicodeString("C:\\Textures\\Wood \xc3\xa9rable.png"));
  EXPECT_EQ(drop->GetFlag(), 0);
  QAVRbaUIFileDropNotification copy(*drop);
  drop->FilePath = "other.png";
  EXPECT_EQ(copy.FilePath, QAVUnicodeString("C:\\Textures\\Wood \xc3\xa9rable.png"));
  copy = *drop;
  EXPECT_EQ(copy.FilePath, QAVUnicodeString("other.png"));
  EXPECT_EQ(copy.GetRefCount(), 1u) << "a copy has its own count";
}

TEST_F(QAVRbaUIEventsTest, TextureDroppedReachesSubscribersOfTheCurrentLayoutWithItsRecord) {
  auto layout = QAVMakeRef<QAVFrmLayout>();
  QAVFrmLayout::SetCurrentLayout(layout.get());
  QAVCallbackManager* callbacks = QAVFrmLayout::GetCurrentLayout()->GetCallbackManager();
  ASSERT_NE(callbacks, nullptr);

  std::vector<std::string> received;
  callbacks->AddCallback(QAVRbaUIEvents::TEXTURE_DROPPED(),
                         [&received](const char* event, void* data, QAVNotification* notification,
                                     void*, QAVCallback) {
                           EXPECT_EQ(event, QAVRbaUIEvents::TEXTURE_DROPPED());
                           EXPECT_EQ(data, QAVFrmLayout::GetCurrentLayout()->GetCallbackManager());
                           auto* drop = dynamic_cast<QAVRbaUIFileDropNotification*>(notification);
                           ASSERT_NE(drop, nullptr);
                           received.push_back(drop->FilePath.str());  // copied: the record goes
                         });

  // As the sender does: create the record, dispatch, release.
  auto* drop = new CountedDrop("D:\\maps\\stone.hdr");
  callbacks->DispatchCallbacks(QAVRbaUIEvents::TEXTURE_DROPPED(), drop, callbacks);
  EXPECT_EQ(CountedDrop::alive, 1);
  EXPECT_EQ(drop->Release(), 0u);
  EXPECT_EQ(CountedDrop::alive, 0) << "the sender's release destroys the record";

  EXPECT_EQ(received, std::vector<std::string>{"D:\\maps\\stone.hdr"});
  const auto dispatches = Dispatches(callbacks);
  ASSERT_EQ(dispatches.size(), 1u);
  EXPECT_EQ(dispatches[0].name, "QAVRbaUIEventsTEXTURE_DROPPEDEvt");
  EXPECT_EQ(dispatches[0].detail, "QAVRbaUIFileDropNotification");
  EXPECT_EQ(dispatches[0].data, callbacks);
}
