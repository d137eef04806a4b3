#include "QAVMutex.h"

#include <atomic>
#include <mutex>
#include <new>

namespace {
std::atomic<bool> creationFails{false};

}  // namespace

struct QAVMutex::Impl {
  std::mutex mutex;
};

QAVMutex::QAVMutex(int /*option1*/, int /*option2*/, int /*option3*/)
    : _impl(std::make_unique<Impl>()) {}

QAVMutex::~QAVMutex() = default;

QAVMutex* QAVMutex::Create(int option1, int option2, int option3) {
  if (creationFails) return nullptr;
  return new (std::nothrow) QAVMutex(option1, option2, option3);
}

int QAVMutex::LockF() {
  _impl->mutex.lock();
  return 0;
}

int QAVMutex::UnlockF() {
  _impl->mutex.unlock();
  return 0;
}

void QAVMutex::SetCreationFails(bool fails) { creationFails = fails; }
