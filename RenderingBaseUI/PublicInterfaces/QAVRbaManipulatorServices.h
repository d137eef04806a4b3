// Finding and measuring the geometry under a selected object, for the placement
// tools: the 3D representation that shows an object in context, every piece of
// renderable geometry below a representation with its accumulated
// transformation, and the axis-aligned box of that geometry as a size and a
// centre.
#ifndef QAVRbaManipulatorServices_h
#define QAVRbaManipulatorServices_h

#include <vector>

#include "QAV3DRep.h"
#include "QAV4x4Matrix.h"
#include "QAVMathPoint.h"
#include "QAVOmbObjectInContext.h"
#include "QAVPathElement.h"
#include "QAVRbaUIExport.h"
#include "QAVTypes.h"

// One piece of renderable geometry met by the walk: the representation, with
// one reference held that whoever consumes the list releases, and the product
// of the bag matrices met from the root of the walk down to it, outer first.
struct GeomWithTransform {
  QAV3DRep* rep = nullptr;
  QAV4x4Matrix transform;
};

class QAVRBAUI_API QAVRbaManipulatorServices {
 public:
  // The representation that shows `object`, the first found of: the leaf
  // object's visualisation; the visualisation of the first occurrence, under
  // the active product's root occurrence, of the leaf instance taken as a
  // representation instance; that of the first occurrence of the leaf
  // component of the path taken as an instance. S_OK with `rep` set
  // (borrowed: the visualisation keeps it), or E_FAIL with `rep` untouched.
  static HRESULT GetPointed3DRep(QAVOmbObjectInContext* object, QAV3DRep*& rep);

  // Appends to `list`, depth first and parents before children, every
  // representation below `rep` (itself included) that the rendering model
  // sees as geometry, each with `matrix` times the bag matrices on the way
  // down. With `skipRootMatrix`, the matrix of `rep` itself is not applied.
  static void GetSupportGeometry(QAV3DRep* rep, std::vector<GeomWithTransform>& list,
                                 QAV4x4Matrix matrix, bool skipRootMatrix);

  // The box of every vertex below `rep`, placed by the bags below the root
  // (the root's own matrix is not applied), computed in single precision.
  // S_OK; S_FALSE with size (1, 1, 1) and centre (0, 0, 0) when there is no
  // geometry at all; E_FAIL, outputs untouched, for a null rep. Geometry
  // without a single vertex is not guarded against: its size and centre come
  // out infinite.
  static HRESULT ComputeBoundingBoxFor3DRep(QAV3DRep* rep, float& sizeX, float& sizeY, float& sizeZ,
                                            float& centreX, float& centreY, float& centreZ);

  // The size and centre of the support of `object`: the box of its
  // representation (leaf object's visualisation first), else the box of the
  // first face of the leaf object with the face's point at 0 as the centre,
  // else the box of the representation of the occurrence routes. S_OK, or
  // E_FAIL with the outputs untouched.
  static HRESULT GetSupportSizeAndCenter(QAVOmbObjectInContext* object, QAVMathPoint& centre,
                                         QAVMathPoint& size);

  // Where the support's own space lies in the scene (the space of its box and
  // of a placement on it): the bag matrices from the scene's root down to the
  // representation of `object`, its own included. E_FAIL with the identity
  // when the object has no representation.
  static HRESULT GetSupportToScene(QAVOmbObjectInContext* object, QAV4x4Matrix& toScene);

  // The path of the geometry selected for manipulation, kept here for the
  // placement modules (not read by these services). Starts null.
  static QAVPathElement* _selected_geometry_path;
};

#endif
