// A vector of 3D space in double precision.
#ifndef QAVMathVector_h
#define QAVMathVector_h

struct QAVMathVector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr QAVMathVector() = default;
  constexpr QAVMathVector(double xValue, double yValue, double zValue)
      : x(xValue), y(yValue), z(zValue) {}

  friend constexpr bool operator==(const QAVMathVector& a, const QAVMathVector& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
};

#endif
