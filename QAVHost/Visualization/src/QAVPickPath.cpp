#include "QAVPickPath.h"

#include <utility>

QAV_IMPLEMENT_CLASS(QAVPickPath, QAVBaseUnknown, "Visualization");

QAVPickPath::QAVPickPath(Reps leafToRoot, QAV3DViewpoint* viewpoint,
                         const QAVMathPoint& intersection, const QAVMathVector& normal,
                         int subElement, double distance)
    : QAVPickPath(std::make_shared<const Reps>(std::move(leafToRoot)), viewpoint, intersection,
                  normal, subElement, distance) {}

QAVPickPath::QAVPickPath(std::shared_ptr<const Reps> leafToRoot, QAV3DViewpoint* viewpoint,
                         const QAVMathPoint& intersection, const QAVMathVector& normal,
                         int subElement, double distance)
    : _reps(std::move(leafToRoot)),
      _viewpoint(viewpoint),
      _intersection(intersection),
      _normal(normal),
      _subElement(subElement),
      _distance(distance) {}

QAVPickPath::~QAVPickPath() = default;

QAV3DRep* QAVPickPath::GetRep(int index) const {
  if (index < 0 || index >= GetRepCount()) return nullptr;
  return (*_reps)[static_cast<std::size_t>(index)].get();
}

QAV3DRep* QAVPickPath::NextFatherRep() {
  if (_next >= GetRepCount()) return nullptr;
  return GetRep(_next++);
}
