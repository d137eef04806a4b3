#include "QAVTestScenes.h"

#include <gtest/gtest.h>

#include "QAVModelObject.h"

namespace qavtest {

QAVRef<QAVSurfacicRep> Square(double half, const char* className) {
  auto square = QAVMakeRef<QAVSurfacicRep>();
  const auto h = static_cast<float>(half);
  EXPECT_TRUE(square->SetGeometry({-h, -h, 0, h, -h, 0, h, h, 0, -h, h, 0},
                                  {0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}, {0, 1, 2, 0, 2, 3}));
  if (className) square->SetModelObject(QAVMakeRef<QAVModelObject>(className).get());
  return square;
}

QAVRef<QAV3DBagRep> Moved(QAV3DRep* child, double dx, double dy, double dz, const char* className) {
  auto bag = QAVMakeRef<QAV3DBagRep>();
  bag->SetMatrix(QAV4x4Matrix({1, 0, 0, dx, 0, 1, 0, dy, 0, 0, 1, dz, 0, 0, 0, 1}));
  EXPECT_TRUE(bag->AddChild(child));
  if (className) bag->SetModelObject(QAVMakeRef<QAVModelObject>(className).get());
  return bag;
}

}  // namespace qavtest
