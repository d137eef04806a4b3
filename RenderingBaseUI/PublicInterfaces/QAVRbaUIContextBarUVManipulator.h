// The context bar of the UV manipulator: crop mode, mapping type, fit to support. Late type
// "QAVRbaUIContextBarUVManipulatorComponent".
#ifndef QAVRbaUIContextBarUVManipulator_h
#define QAVRbaUIContextBarUVManipulator_h

#include "QAVRbaUIContextBar.h"

class QAVRBAUI_API QAVRbaUIContextBarUVManipulator : public QAVRbaUIContextBar {
  QAV_DECLARE_CLASS
 public:
  QAVRbaUIContextBarUVManipulator();
  ~QAVRbaUIContextBarUVManipulator() override;

 protected:
  const RowItem* GetRowItems(int& count) const override;
};

#endif
