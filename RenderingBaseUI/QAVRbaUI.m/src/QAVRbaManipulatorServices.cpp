#include "QAVRbaManipulatorServices.h"

#include <algorithm>
#include <array>
#include <cstdint>
#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "QAVFace.h"
#include "QAVI3DGeoVisu.h"
#include "QAVIFaceList.h"
#include "QAVIPLMNavInstance.h"
#include "QAVIPLMNavRepInstance.h"
#include "QAVIPrdObject.h"
#include "QAVIRbaGeometry.h"
#include "QAVMathBox.h"
#include "QAVMathPointf.h"
#include "QAVRbaPLMServices.h"
#include "QAVRef.h"

QAVPathElement* QAVRbaManipulatorServices::_selected_geometry_path = nullptr;

namespace {

// The largest finite single-precision value.
constexpr float kLargest = 3.4028235e38F;

QAV3DRep* RepOf(QAVBaseUnknown* object) {
  const auto visu = QAVQuery<QAVI3DGeoVisu>(object);
  return visu ? visu->GiveRep() : nullptr;
}

// Route a: the leaf object shows itself.
QAV3DRep* LeafObjectRep(QAVOmbObjectInContext& object) { return RepOf(object.GetLeafObject()); }

// Routes b and c: through the occurrences, under the active product's root
// occurrence, of the leaf instance (as a representation instance), else of the
// path's leaf component (as an instance).
QAV3DRep* OccurrenceRep(QAVOmbObjectInContext& object, QAVIPrdObject* product) {
  QAVIPLMNavOccurrence* root = product ? product->GetRootOccurrence() : nullptr;
  const auto repInstance = QAVQuery<QAVIPLMNavRepInstance>(object.GetLeafInstance());
  if (repInstance && product) {
    std::vector<QAVRef<QAVIPLMNavRepOccurrence>> occurrences;
    repInstance->ListRepOccurrences(root, occurrences);
    if (!occurrences.empty())
      if (QAV3DRep* rep = RepOf(occurrences.front().get())) return rep;
  }
  std::vector<QAVIPLMComponent*> components;
  object.ListComponents(components);
  QAV3DRep* rep = nullptr;
  const auto instance =
      QAVQuery<QAVIPLMNavInstance>(components.empty() ? nullptr : components.back());
  if (instance && product) {
    std::vector<QAVRef<QAVIPLMNavOccurrence>> occurrences;
    instance->ListOccurrences(root, occurrences);
    if (!occurrences.empty()) rep = RepOf(occurrences.front().get());
  }
  for (QAVIPLMComponent* component : components)
    component->Release();
  return rep;
}

QAVRef<QAVIPrdObject> ActiveProduct() {
  QAVIPrdObject* product = nullptr;
  if (FAILED(QAVRbaPLMServices::GetUIActiveProduct(product))) return nullptr;
  return QAVRef<QAVIPrdObject>::Adopt(product);
}

// The single-precision coefficients of a matrix, for folding many points.
struct Matrixf {
  std::array<float, 16> m{};
  bool affine = false;  // last row (0, 0, 0, 1): no perspective divide

  explicit Matrixf(const QAV4x4Matrix& matrix) {
    for (std::size_t i = 0; i < 16; ++i)
      m[i] = static_cast<float>(matrix.RowMajor()[i]);
    affine = m[12] == 0.0F && m[13] == 0.0F && m[14] == 0.0F && m[15] == 1.0F;
  }
};

struct Bounds {
  float minX = kLargest, minY = kLargest, minZ = kLargest;
  float maxX = -kLargest, maxY = -kLargest, maxZ = -kLargest;

  void Fold(float x, float y, float z) {
    minX = std::min(minX, x);
    minY = std::min(minY, y);
    minZ = std::min(minZ, z);
    maxX = std::max(maxX, x);
    maxY = std::max(maxY, y);
    maxZ = std::max(maxZ, z);
  }

  // Every vertex (three floats each, while inside the array) placed by the
  // matrix. With an affine matrix the product is the same as the general one
  // (w is exactly 1 for finite coordinates), without its divide.
  void FoldVertices(const float* v, int length, const QAV4x4Matrix& matrix) {
    const Matrixf f(matrix);
    const auto& m = f.m;
    if (f.affine) {
#if defined(__SSE2__)
      // The three rows at once, in the same order of operations as one row
      // at a time: ((m0 x + m1 y) + m2 z) + m3, so the results are the same.
      const __m128 c0 = _mm_setr_ps(m[0], m[4], m[8], 0.0F);
      const __m128 c1 = _mm_setr_ps(m[1], m[5], m[9], 0.0F);
      const __m128 c2 = _mm_setr_ps(m[2], m[6], m[10], 0.0F);
      const __m128 c3 = _mm_setr_ps(m[3], m[7], m[11], 0.0F);
      __m128 lo = _mm_setr_ps(minX, minY, minZ, 0.0F);
      __m128 hi = _mm_setr_ps(maxX, maxY, maxZ, 0.0F);
      for (int i = 0; i + 2 < length; i += 3) {
        const __m128 p = _mm_add_ps(_mm_add_ps(_mm_add_ps(_mm_mul_ps(c0, _mm_set1_ps(v[i])),
                                                          _mm_mul_ps(c1, _mm_set1_ps(v[i + 1]))),
                                               _mm_mul_ps(c2, _mm_set1_ps(v[i + 2]))),
                                    c3);
        lo = _mm_min_ps(p, lo);  // keeps lo when p is not a number, as std::min does
        hi = _mm_max_ps(p, hi);
      }
      alignas(16) float low[4];
      alignas(16) float high[4];
      _mm_store_ps(low, lo);
      _mm_store_ps(high, hi);
      minX = low[0];
      minY = low[1];
      minZ = low[2];
      maxX = high[0];
      maxY = high[1];
      maxZ = high[2];
#else
      for (int i = 0; i + 2 < length; i += 3) {
        const float x = v[i];
        const float y = v[i + 1];
        const float z = v[i + 2];
        Fold(m[0] * x + m[1] * y + m[2] * z + m[3], m[4] * x + m[5] * y + m[6] * z + m[7],
             m[8] * x + m[9] * y + m[10] * z + m[11]);
      }
#endif
      return;
    }
    for (int i = 0; i + 2 < length; i += 3) {
      const QAVMathPointf p = matrix * QAVMathPointf(v[i], v[i + 1], v[i + 2]);
      Fold(p.x, p.y, p.z);
    }
  }
};

}  // namespace

HRESULT QAVRbaManipulatorServices::GetPointed3DRep(QAVOmbObjectInContext* object, QAV3DRep*& rep) {
  if (!object) return E_FAIL;
  const QAVRef<QAVIPrdObject> product = ActiveProduct();
  QAV3DRep* found = LeafObjectRep(*object);
  if (!found) found = OccurrenceRep(*object, product.get());
  if (!found) return E_FAIL;
  rep = found;
  return S_OK;
}

HRESULT QAVRbaManipulatorServices::GetSupportToScene(QAVOmbObjectInContext* object,
                                                     QAV4x4Matrix& toScene) {
  toScene = QAV4x4Matrix();
  QAV3DRep* rep = nullptr;
  if (FAILED(GetPointed3DRep(object, rep))) return E_FAIL;
  for (const QAV3DRep* at = rep; at; at = at->GetFather())
    if (const auto* bag = dynamic_cast<const QAV3DBagRep*>(at); bag && bag->GetMatrix())
      toScene = *bag->GetMatrix() * toScene;
  return S_OK;
}

void QAVRbaManipulatorServices::GetSupportGeometry(QAV3DRep* rep,
                                                   std::vector<GeomWithTransform>& list,
                                                   QAV4x4Matrix matrix, bool skipRootMatrix) {
  if (!rep || !rep->IsAKindOf("QAV3DRep")) return;
  auto* bag = rep->IsAKindOf("QAV3DBagRep") ? static_cast<QAV3DBagRep*>(rep) : nullptr;
  if (!skipRootMatrix && bag && bag->GetMatrix()) matrix = matrix * *bag->GetMatrix();
  if (QAVQuery<QAVIRbaGeometry>(rep)) {
    rep->AddRef();
    list.push_back({rep, matrix});
  }
  if (!bag) return;
  for (int i = 0; i < bag->GetChildCount(); ++i)
    GetSupportGeometry(bag->GetChild(i), list, matrix, false);
}

HRESULT QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(QAV3DRep* rep, float& sizeX,
                                                              float& sizeY, float& sizeZ,
                                                              float& centreX, float& centreY,
                                                              float& centreZ) {
  if (!rep) return E_FAIL;
  std::vector<GeomWithTransform> list;
  GetSupportGeometry(rep, list, QAV4x4Matrix(), true);
  Bounds bounds;
  for (const GeomWithTransform& record : list) {
    if (const auto geometry = QAVQuery<QAVIRbaGeometry>(record.rep)) {
      const int parts = geometry->GetGeometryCount();
      for (int part = 0; part < parts; ++part) {
        const float* vertices = nullptr;
        const float* normals = nullptr;
        const std::uint32_t* indices = nullptr;
        int vertexLength = 0;
        int normalLength = 0;
        int indexLength = 0;
        if (FAILED(geometry->GetGeometry(part, vertices, vertexLength, normals, normalLength,
                                         indices, indexLength)))
          continue;
        bounds.FoldVertices(vertices, vertexLength, record.transform);
      }
    }
    record.rep->Release();
  }
  if (list.empty()) {
    sizeX = sizeY = sizeZ = 1.0F;
    centreX = centreY = centreZ = 0.0F;
    return S_FALSE;
  }
  // Without a single vertex the extremes are still the starting ones and the
  // size overflows to minus infinity: left as it is, callers see it.
  sizeX = bounds.maxX - bounds.minX;
  sizeY = bounds.maxY - bounds.minY;
  sizeZ = bounds.maxZ - bounds.minZ;
  centreX = sizeX * 0.5F + bounds.minX;
  centreY = sizeY * 0.5F + bounds.minY;
  centreZ = sizeZ * 0.5F + bounds.minZ;
  return S_OK;
}

HRESULT QAVRbaManipulatorServices::GetSupportSizeAndCenter(QAVOmbObjectInContext* object,
                                                           QAVMathPoint& centre,
                                                           QAVMathPoint& size) {
  if (!object) return E_FAIL;
  QAV3DRep* rep = LeafObjectRep(*object);
  if (!rep) {
    if (const auto faceList = QAVQuery<QAVIFaceList>(object->GetLeafObject())) {
      std::vector<QAVRef<QAVFace>> faces;
      faceList->ListFaces(faces);
      if (!faces.empty()) {
        QAVMathPoint point;
        faces.front()->GetPoint(0.0, point);
        QAVMathBox box;
        faces.front()->GetBoundingBox(box);
        double xMin = 0, xMax = 0, yMin = 0, yMax = 0, zMin = 0, zMax = 0;
        box.GetLimits(xMin, xMax, yMin, yMax, zMin, zMax);
        centre = point;
        size = {xMax - xMin, yMax - yMin, zMax - zMin};
        return S_OK;
      }
    }
    const QAVRef<QAVIPrdObject> product = ActiveProduct();
    rep = OccurrenceRep(*object, product.get());
  }
  if (!rep) return E_FAIL;
  float sx = 0, sy = 0, sz = 0, cx = 0, cy = 0, cz = 0;
  ComputeBoundingBoxFor3DRep(rep, sx, sy, sz, cx, cy, cz);
  centre = {cx, cy, cz};
  size = {sx, sy, sz};
  return S_OK;
}
