// Graphic primitives: what a representation draws. A surfacic representation
// is made of faces (QAV3DFaceGP, consecutive runs of its triangles); cylinders
// and pipes have one face each; custom representations hold any primitives,
// among them the fixed-size plane and arrow that gizmos are made of. A
// fixed-size primitive keeps its size in pixels whatever the zoom: its
// lengths are pixels on screen, its point and directions are in the space of
// the bag above it.
#ifndef QAVGraphicPrimitive_h
#define QAVGraphicPrimitive_h

#include "QAVBaseUnknown.h"
#include "QAVMathPointf.h"
#include "QAVMathVectorf.h"

// How a primitive is drawn: one colour (8-bit channels) and an opacity.
struct QAVGraphicAttributeSet {
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;
  unsigned char alpha = 255;
};

class QAVHOST_API QAVGraphicPrimitive : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVGraphicPrimitive() = default;
  ~QAVGraphicPrimitive() override;
  const QAVGraphicAttributeSet& GetAttributes() const { return _attributes; }
  void SetAttributes(const QAVGraphicAttributeSet& attributes) { _attributes = attributes; }

 private:
  QAVGraphicAttributeSet _attributes;
};

// A face: `count` triangles of a representation from triangle `first` on.
class QAVHOST_API QAV3DFaceGP : public QAVGraphicPrimitive {
  QAV_DECLARE_CLASS
 public:
  QAV3DFaceGP(int first, int count) : _first(first), _count(count) {}
  ~QAV3DFaceGP() override;
  int GetFirstTriangle() const { return _first; }
  int GetTriangleCount() const { return _count; }

 private:
  int _first;
  int _count;
};

// A square of `size` pixels centred on a point, spanned by two directions.
class QAVHOST_API QAV3DFixedPlanGP : public QAVGraphicPrimitive {
  QAV_DECLARE_CLASS
 public:
  QAV3DFixedPlanGP(const QAVMathPointf& point, const QAVMathVectorf& first,
                   const QAVMathVectorf& second, float size)
      : _point(point), _first(first), _second(second), _size(size) {}
  ~QAV3DFixedPlanGP() override;
  const QAVMathPointf& GetPoint() const { return _point; }
  const QAVMathVectorf& GetFirstDirection() const { return _first; }
  const QAVMathVectorf& GetSecondDirection() const { return _second; }
  float GetSize() const { return _size; }

 private:
  QAVMathPointf _point;
  QAVMathVectorf _first;
  QAVMathVectorf _second;
  float _size;
};

// An arrow of `length` pixels from a point along a direction, with a head of
// `headSize` pixels; style 0 is a plain open head.
class QAVHOST_API QAV3DFixedArrowGP : public QAVGraphicPrimitive {
  QAV_DECLARE_CLASS
 public:
  QAV3DFixedArrowGP(const QAVMathPointf& point, const QAVMathVectorf& direction, float length,
                    float headSize, int style)
      : _point(point), _direction(direction), _length(length), _headSize(headSize), _style(style) {}
  ~QAV3DFixedArrowGP() override;
  const QAVMathPointf& GetPoint() const { return _point; }
  const QAVMathVectorf& GetDirection() const { return _direction; }
  float GetLength() const { return _length; }
  float GetHeadSize() const { return _headSize; }
  int GetStyle() const { return _style; }

 private:
  QAVMathPointf _point;
  QAVMathVectorf _direction;
  float _length;
  float _headSize;
  int _style;
};

#endif
