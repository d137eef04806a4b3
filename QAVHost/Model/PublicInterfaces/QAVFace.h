// A face of a part's geometry: a bounded piece of surface.
#ifndef QAVFace_h
#define QAVFace_h

#include "QAVBaseUnknown.h"
#include "QAVMathBox.h"
#include "QAVMathPoint.h"

class QAVHOST_API QAVFace : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // A planar parallelogram: the centre and the two half sides.
  QAVFace(const QAVMathPoint& centre, const QAVMathVector& halfU, const QAVMathVector& halfV);
  ~QAVFace() override;

  // The point at parameter t along the face's first direction: the centre at
  // 0, the middles of two opposite sides at -1 and 1.
  void GetPoint(double t, QAVMathPoint& point) const;
  // The smallest axis-aligned box holding the face.
  void GetBoundingBox(QAVMathBox& box) const;

 private:
  QAVMathPoint _centre;
  QAVMathVector _halfU;
  QAVMathVector _halfV;
};

#endif
