// The context bar of an applied material. Late type
// "QAVRbaUIContextBarMaterialComponent".
#ifndef QAVRbaUIContextBarMaterial_h
#define QAVRbaUIContextBarMaterial_h

#include "QAVRbaUIContextBar.h"

class QAVRBAUI_API QAVRbaUIContextBarMaterial : public QAVRbaUIContextBar {
  QAV_DECLARE_CLASS
 public:
  QAVRbaUIContextBarMaterial();
  ~QAVRbaUIContextBarMaterial() override;

 protected:
  const RowItem* GetRowItems(int& count) const override;
};

#endif
