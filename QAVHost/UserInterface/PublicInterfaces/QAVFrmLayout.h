// The host's frame layout: the set of document windows, the current one, and the
// callback manager through which the modules' panels exchange named events.
//
// The current layout is process-wide state: whoever plays the host (a test, a
// program) sets it; null means no frame exists.
#ifndef QAVFrmLayout_h
#define QAVFrmLayout_h

#include <vector>

#include "QAVEventSubscriber.h"
#include "QAVRef.h"

class QAVCallbackManager;
class QAVFrmWindow;

class QAVHOST_API QAVFrmLayout : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  // A layout with no window and a callback manager of its own.
  QAVFrmLayout();
  QAVFrmLayout(const QAVFrmLayout&) = delete;
  QAVFrmLayout& operator=(const QAVFrmLayout&) = delete;
  ~QAVFrmLayout() override;

  // The current layout (borrowed), or null.
  static QAVFrmLayout* GetCurrentLayout();
  // Makes a layout current, holding a reference to it; null leaves none.
  static void SetCurrentLayout(QAVFrmLayout* layout);

  // Borrowed; may be null.
  QAVCallbackManager* GetCallbackManager() const { return _callbacks.get(); }
  // Holds a reference to the new manager; null leaves the layout without one.
  void SetCallbackManager(QAVCallbackManager* manager);

  // Windows, in the order they were added; the layout holds a reference to each.
  HRESULT AddWindow(QAVFrmWindow* window);  // E_INVALIDARG for null, S_FALSE if present
  // Removes a window (and clears the current window when it was that one).
  HRESULT RemoveWindow(QAVFrmWindow* window);  // E_FAIL when absent
  int GetWindowCount() const { return static_cast<int>(_windows.size()); }
  QAVFrmWindow* GetWindow(int index) const;  // 0-based; null out of range

  // The current window (borrowed), or null.
  QAVFrmWindow* GetCurrentWindow() const { return _currentWindow; }
  // Makes a window current, adding it to the layout when absent; null leaves none.
  void SetCurrentWindow(QAVFrmWindow* window);

 private:
  QAVRef<QAVCallbackManager> _callbacks;
  std::vector<QAVRef<QAVFrmWindow>> _windows;
  QAVFrmWindow* _currentWindow = nullptr;  // one of _windows
};

#endif
