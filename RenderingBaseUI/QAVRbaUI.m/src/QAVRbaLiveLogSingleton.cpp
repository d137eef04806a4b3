#include "QAVRbaLiveLogSingleton.h"

#include <utility>

#include "QAVMutex.h"
#include "QAVProcessState.h"

QAVRbaLiveLogSingleton* QAVRbaLiveLogSingleton::_singleton = nullptr;

// Tests put the process back to its start-up state: no instance yet.
struct QAVRbaLiveLogSingletonAccess {
  static void Reset() {
    delete QAVRbaLiveLogSingleton::_singleton;
    QAVRbaLiveLogSingleton::_singleton = nullptr;
  }
};
QAV_REGISTER_RESET(QAVRbaLiveLogSingleton, QAVRbaLiveLogSingletonAccess::Reset);

namespace {
// Holds a host mutex for one scope.
class Locked {
 public:
  explicit Locked(QAVMutex* mutex) : _mutex(mutex) { _mutex->LockF(); }
  ~Locked() { _mutex->UnlockF(); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  QAVMutex* _mutex;
};
}  // namespace

QAVRbaLiveLogSingleton* QAVRbaLiveLogSingleton::Get() {
  if (!_singleton) _singleton = new QAVRbaLiveLogSingleton;
  return _singleton;
}

QAVRbaLiveLogSingleton::QAVRbaLiveLogSingleton() : _lock(QAVMutex::Create(0, 1, 0)) {}

QAVRbaLiveLogSingleton::~QAVRbaLiveLogSingleton() { delete _lock; }

QAVRbaLiveLogSingleton::QAVRbaLiveLogSingleton(const QAVRbaLiveLogSingleton& other)
    : _level(other._level.load()), _lock(QAVMutex::Create(0, 1, 0)) {
  if (other._lock) {
    Locked guard(other._lock);
    _messages = other._messages;
  }
}

QAVRbaLiveLogSingleton& QAVRbaLiveLogSingleton::operator=(const QAVRbaLiveLogSingleton& other) {
  if (this == &other) return *this;
  std::vector<Entry> copied;
  if (other._lock) {
    Locked guard(other._lock);
    copied = other._messages;
  }
  _level = other._level.load();
  if (_lock) {
    Locked guard(_lock);
    _messages = std::move(copied);
  } else {
    _messages = std::move(copied);
  }
  return *this;
}

HRESULT QAVRbaLiveLogSingleton::AddMessage(int level, std::string text) {
  if (level > _level.load() || !_lock) return E_FAIL;
  Locked guard(_lock);
  _messages.push_back(Entry{level, std::move(text)});
  return S_OK;
}

HRESULT QAVRbaLiveLogSingleton::GetMessage(std::size_t index, int& level, std::string& text) {
  if (!_lock) return E_FAIL;
  Locked guard(_lock);
  if (index >= _messages.size()) return E_FAIL;
  level = _messages[index].level;
  text = _messages[index].text;
  return S_OK;
}

HRESULT QAVRbaLiveLogSingleton::GetLevel(int& level) {
  level = _level.load();
  return S_OK;
}

HRESULT QAVRbaLiveLogSingleton::SetLevel(int level) {
  _level = level;
  return S_OK;
}
