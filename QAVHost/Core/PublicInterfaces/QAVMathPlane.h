// A plane of 3D space (double precision): an origin and two directions that span
// it, with the normal they make.
#ifndef QAVMathPlane_h
#define QAVMathPlane_h

#include <cmath>

#include "QAVMathPoint.h"
#include "QAVMathVector.h"

class QAVMathPlane {
 public:
  // The plane z = 0 through the origin, spanned by x and y.
  constexpr QAVMathPlane() = default;
  constexpr QAVMathPlane(const QAVMathPoint& origin, const QAVMathVector& firstDirection,
                         const QAVMathVector& secondDirection)
      : _origin(origin), _first(firstDirection), _second(secondDirection) {}

  constexpr const QAVMathPoint& GetOrigin() const { return _origin; }
  constexpr const QAVMathVector& GetFirstDirection() const { return _first; }
  constexpr const QAVMathVector& GetSecondDirection() const { return _second; }
  void SetOrigin(const QAVMathPoint& origin) { _origin = origin; }
  void SetDirections(const QAVMathVector& first, const QAVMathVector& second) {
    _first = first;
    _second = second;
  }

  // The unit normal, first direction x second direction; the null vector when
  // the directions are parallel or null.
  QAVMathVector GetNormal() const {
    const QAVMathVector n(_first.y * _second.z - _first.z * _second.y,
                          _first.z * _second.x - _first.x * _second.z,
                          _first.x * _second.y - _first.y * _second.x);
    const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    return length > 0 ? QAVMathVector(n.x / length, n.y / length, n.z / length) : QAVMathVector();
  }

  // The point at (u, v) along the two directions from the origin.
  constexpr QAVMathPoint Evaluate(double u, double v) const {
    return {_origin.x + u * _first.x + v * _second.x, _origin.y + u * _first.y + v * _second.y,
            _origin.z + u * _first.z + v * _second.z};
  }

  friend constexpr bool operator==(const QAVMathPlane& a, const QAVMathPlane& b) {
    return a._origin == b._origin && a._first == b._first && a._second == b._second;
  }

 private:
  QAVMathPoint _origin;
  QAVMathVector _first{1.0, 0.0, 0.0};
  QAVMathVector _second{0.0, 1.0, 0.0};
};

#endif
