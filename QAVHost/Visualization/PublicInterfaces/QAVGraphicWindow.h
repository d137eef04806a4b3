// The graphic window that supports a viewer: the drawable area of the screen.
// It announces its resizes (GRAPHICWINDOW_RESIZE, with the window as data and no
// notification) on its callback manager, after the new size is in place.
#ifndef QAVGraphicWindow_h
#define QAVGraphicWindow_h

#include "QAVCallbackManager.h"
#include "QAVEventSubscriber.h"
#include "QAVRef.h"

class QAVHOST_API QAVGraphicWindow : public QAVEventSubscriber {
  QAV_DECLARE_CLASS
 public:
  static const char* GRAPHICWINDOW_RESIZE();

  // The sides a graphic area may have, in pixels, each way: what a scene file
  // may ask for and what a view is drawn at (QAVViewRenderer refuses others).
  static constexpr int kMinWindowSide = 1;
  static constexpr int kMaxWindowSide = 8192;

  QAVGraphicWindow();
  ~QAVGraphicWindow() override;
  QAVGraphicWindow(const QAVGraphicWindow&) = delete;
  QAVGraphicWindow& operator=(const QAVGraphicWindow&) = delete;

  QAVCallbackManager* GetCallbackManager() const { return _callbacks.get(); }
  // The size in pixels (fractions are possible on scaled screens).
  void GetSize(float& width, float& height) const;

 private:
  friend class QAVHostDriver;
  // The platform's resize: takes the new size, then sends GRAPHICWINDOW_RESIZE.
  void Resize(float width, float height);

  QAVRef<QAVCallbackManager> _callbacks;
  float _width = 800.0F;
  float _height = 600.0F;
};

#endif
