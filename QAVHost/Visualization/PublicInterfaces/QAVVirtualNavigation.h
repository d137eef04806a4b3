// The virtual navigation of a 3D window (walking, flying through the scene),
// which moves the window's viewpoint. ResetViewpoint gives the viewpoint back
// as it was before the navigation began.
#ifndef QAVVirtualNavigation_h
#define QAVVirtualNavigation_h

#include "QAVBaseUnknown.h"

class QAVHOST_API QAVVirtualNavigation : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVVirtualNavigation() = default;
  ~QAVVirtualNavigation() override;

  void ResetViewpoint() { ++_resets; }
  // How many times the viewpoint was reset.
  int GetResetCount() const { return _resets; }

 private:
  int _resets = 0;
};

#endif
