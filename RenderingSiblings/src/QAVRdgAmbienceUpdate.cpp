#include "QAVRdgAmbienceUpdate.h"

#include <mutex>
#include <utility>

#include "QAVProcessState.h"

namespace {

struct Record {
  std::mutex lock;
  std::vector<std::string> calls;
  int created = 0;
  int alive = 0;
  bool available = true;
};

Record& TheRecord() {
  static Record* const record = new Record;
  return *record;
}

void Forget() {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  record.calls.clear();
  record.created = 0;
  record.available = true;
}
QAV_REGISTER_RESET(QAVRdgAmbienceUpdate, Forget);

void Note(std::string call) {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  record.calls.push_back(std::move(call));
}

}  // namespace

// The factory refuses while the component is unavailable.
QAVMetaClass* QAVRdgAmbienceUpdate::MetaObject() {
  static QAVMetaClass* const meta =
      QAVMetaClass::Create("QAVRdgAmbienceUpdate", QAVIRbaAmbienceUpdate::MetaObject(),
                           "RenderingSiblings", &QAVRdgAmbienceUpdate::CreateItself);
  return meta;
}
const char* QAVRdgAmbienceUpdate::ClassName() { return "QAVRdgAmbienceUpdate"; }
const IID& QAVRdgAmbienceUpdate::ClassId() { return MetaObject()->GetClassId(); }
QAVBaseUnknown* QAVRdgAmbienceUpdate::CreateItself() {
  Record& record = TheRecord();
  {
    std::lock_guard guard(record.lock);
    if (!record.available) return nullptr;
  }
  return new QAVRdgAmbienceUpdate;
}
const char* QAVRdgAmbienceUpdate::IsA() const { return "QAVRdgAmbienceUpdate"; }
QAVMetaClass* QAVRdgAmbienceUpdate::GetMetaObject() const { return MetaObject(); }
[[maybe_unused]] static const bool qavRegisteredQAVRdgAmbienceUpdate =
    QAVRdgAmbienceUpdate::MetaObject() != nullptr;

QAVRdgAmbienceUpdate::QAVRdgAmbienceUpdate() {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  ++record.created;
  ++record.alive;
}

QAVRdgAmbienceUpdate::~QAVRdgAmbienceUpdate() {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  --record.alive;
}

HRESULT QAVRdgAmbienceUpdate::OnCameraChange(unsigned char flag) {
  Note("OnCameraChange(" + std::to_string(flag) + ")");
  return S_OK;
}

HRESULT QAVRdgAmbienceUpdate::OnDepthOfFieldChange() {
  Note("OnDepthOfFieldChange()");
  return S_OK;
}

std::vector<std::string> QAVRdgAmbienceUpdate::GetCalls(bool clear) {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  std::vector<std::string> calls = record.calls;
  if (clear) record.calls.clear();
  return calls;
}

int QAVRdgAmbienceUpdate::GetCreatedCount() {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  return record.created;
}

int QAVRdgAmbienceUpdate::GetAliveCount() {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  return record.alive;
}

void QAVRdgAmbienceUpdate::SetAvailable(bool available) {
  Record& record = TheRecord();
  std::lock_guard guard(record.lock);
  record.available = available;
}
