// The rendering model's view of a representation's geometry: its parts, each
// with flat arrays of vertex coordinates (x, y, z, x, y, z, ...), normals
// (likewise) and triangle indices (three per triangle), as the renderer
// uploads them. Geometry representations (QAVSurfacicRep) answer it through an
// extension; the arrays are the representation's own, valid while it lives
// and is not changed.
#ifndef QAVIRbaGeometry_h
#define QAVIRbaGeometry_h

#include <cstdint>

#include "QAVBaseUnknown.h"
#include "QAVRbaSiblingsExport.h"
#include "QAVTypes.h"

class QAVRBASIBLINGS_API QAVIRbaGeometry : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVIRbaGeometry() = default;
  ~QAVIRbaGeometry() override;

  // The number of geometry parts.
  virtual int GetGeometryCount() const = 0;
  // Part `index`: its vertex coordinates and their number of floats, its
  // normals (as many floats as the vertices, or none) and its indices. E_FAIL,
  // with the outputs untouched, for an index out of range.
  virtual HRESULT GetGeometry(int index, const float*& vertices, int& vertexLength,
                              const float*& normals, int& normalLength,
                              const std::uint32_t*& indices, int& indexLength) const = 0;
};

#endif
