// A document window of the host's frame: it shows one viewer and stands on a
// native window of the platform.
#ifndef QAVFrmWindow_h
#define QAVFrmWindow_h

#include <cstdint>

#include "QAVEventSubscriber.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVViewer;

// The platform's identifier of a native window; 0 means none.
using QAVNativeWindowHandle = std::uintptr_t;

class QAVHOST_API QAVFrmWindow : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  // Every new window gets a distinct, non-zero native handle.
  explicit QAVFrmWindow(const char* name = nullptr);
  QAVFrmWindow(const QAVFrmWindow&) = delete;
  QAVFrmWindow& operator=(const QAVFrmWindow&) = delete;
  ~QAVFrmWindow() override;

  // True when other is this same window (false for null).
  bool IsEqual(const QAVFrmWindow* other) const { return other == this; }

  const QAVString& GetName() const { return _name; }
  // Borrowed; null when the window shows no viewer.
  QAVViewer* GetViewer() const { return _viewer.get(); }
  // Holds a reference to the new viewer (null removes it) and releases the old one.
  void SetViewer(QAVViewer* viewer);

  QAVNativeWindowHandle GetNativeHandle() const { return _nativeHandle; }
  void SetNativeHandle(QAVNativeWindowHandle handle) { _nativeHandle = handle; }

 private:
  QAVString _name;
  QAVRef<QAVViewer> _viewer;
  QAVNativeWindowHandle _nativeHandle;
};

#endif
