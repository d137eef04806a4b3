// A vector of 3D space in single precision.
#ifndef QAVMathVectorf_h
#define QAVMathVectorf_h

#include <cmath>

struct QAVMathVectorf {
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;

  constexpr QAVMathVectorf() = default;
  constexpr QAVMathVectorf(float xValue, float yValue, float zValue)
      : x(xValue), y(yValue), z(zValue) {}

  friend constexpr QAVMathVectorf operator-(const QAVMathVectorf& v) { return {-v.x, -v.y, -v.z}; }
  friend constexpr QAVMathVectorf operator*(float k, const QAVMathVectorf& v) {
    return {k * v.x, k * v.y, k * v.z};
  }
  // Dot product.
  friend constexpr float operator*(const QAVMathVectorf& a, const QAVMathVectorf& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
  }
  // Cross product.
  friend constexpr QAVMathVectorf operator^(const QAVMathVectorf& a, const QAVMathVectorf& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
  }
  friend constexpr bool operator==(const QAVMathVectorf& a, const QAVMathVectorf& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }

  float Norm() const { return std::sqrt(x * x + y * y + z * z); }
  // Scales to unit length; a null vector stays null. Returns the former length.
  float Normalize() {
    const float norm = Norm();
    if (norm > 0.0F) {
      x /= norm;
      y /= norm;
      z /= norm;
    }
    return norm;
  }
};

#endif
