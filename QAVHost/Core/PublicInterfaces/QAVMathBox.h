// An axis-aligned box of 3D space in double precision. A new box is empty
// (every minimum above its maximum) until a point is added.
#ifndef QAVMathBox_h
#define QAVMathBox_h

#include <algorithm>
#include <limits>

#include "QAVMathPoint.h"

class QAVMathBox {
 public:
  QAVMathBox() = default;
  QAVMathBox(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax)
      : _min(xMin, yMin, zMin), _max(xMax, yMax, zMax) {}

  bool IsEmpty() const { return _min.x > _max.x || _min.y > _max.y || _min.z > _max.z; }
  // Grows the box to hold the point.
  void AddPoint(const QAVMathPoint& p) {
    _min = {std::min(_min.x, p.x), std::min(_min.y, p.y), std::min(_min.z, p.z)};
    _max = {std::max(_max.x, p.x), std::max(_max.y, p.y), std::max(_max.z, p.z)};
  }
  void GetLimits(double& xMin, double& xMax, double& yMin, double& yMax, double& zMin,
                 double& zMax) const {
    xMin = _min.x;
    xMax = _max.x;
    yMin = _min.y;
    yMax = _max.y;
    zMin = _min.z;
    zMax = _max.z;
  }
  const QAVMathPoint& GetMin() const { return _min; }
  const QAVMathPoint& GetMax() const { return _max; }

 private:
  static constexpr double kHuge = std::numeric_limits<double>::max();
  QAVMathPoint _min{kHuge, kHuge, kHuge};
  QAVMathPoint _max{-kHuge, -kHuge, -kHuge};
};

#endif
