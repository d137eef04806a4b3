// Finding the representation under an object in context and measuring the
// geometry below it, on scenes with a product structure.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAVIPLMNavInstance.h"
#include "QAVIPrdObject.h"
#include "QAVMathPointf.h"
#include "QAVOmbObjectInContext.h"
#include "QAVRbaManipulatorServices.h"
#include "QAVRbaPLMServices.h"
#include "QAVSceneReader.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

// Under a root moved by (100, 0, 0): a part shown directly ("Plain"), an
// instance with a quad (faces) holding a representation instance ("Rim") whose
// geometry is one box further down, and an instance ("Sub") holding an
// instance ("Nut") of a sphere.
constexpr const char* kScene = R"({
  "format": "qav-scene", "version": 1,
  "window": {"width": 200, "height": 100},
  "viewpoint": {"eye": [0, 0, 50], "target": [0, 0, 0], "up": [0, 1, 0]},
  "product": {"name": "Car"},
  "root": {"class": "Assembly", "name": "Root", "translate": [100, 0, 0], "children": [
    {"class": "Part", "name": "Plain", "translate": [1, 2, 3], "shape": {"box": [2, 4, 6]}},
    {"class": "Wheel", "name": "Wheel", "plm": "instance", "translate": [5, 0, 0],
     "shape": {"quad": [4, 2]},
     "children": [{"class": "WheelRep", "name": "Rim", "plm": "rep", "translate": [0, 0, 1],
                   "children": [{"translate": [0, 0, 2], "shape": {"box": [1, 1, 1]}}]}]},
    {"class": "Sub", "name": "Sub", "plm": "instance",
     "children": [{"class": "Nut", "name": "Nut", "plm": "instance", "shape": {"sphere": 1}}]}
  ]}
})";

class ManipulatorServicesTest : public qavtest::HostTest {
 protected:
  void SetUp() override {
    qavtest::HostTest::SetUp();
    std::string error;
    ASSERT_EQ(QAVSceneReader::Parse(kScene, ".", _scene, error), S_OK) << error;
    Driver().ShowScene(_scene);
    QAVRef<QAV3DBagRep>& root = _scene.root;
    _plain = Bag(root.get(), 0);
    _wheel = Bag(root.get(), 1);
    _rim = Bag(_wheel, 1);
    _sub = Bag(root.get(), 2);
    _nut = Bag(_sub, 0);
    Activate(true);
  }
  void TearDown() override {
    QAVRbaPLMServices::SetUIActiveProduct(nullptr);
    qavtest::HostTest::TearDown();
  }

  static QAV3DBagRep* Bag(QAV3DRep* father, int index) {
    auto* bag = dynamic_cast<QAV3DBagRep*>(dynamic_cast<QAV3DBagRep*>(father)->GetChild(index));
    EXPECT_NE(bag, nullptr);
    return bag;
  }
  void Activate(bool active) {
    QAVRbaPLMServices::SetUIActiveProduct(
        active ? QAVQuery<QAVIPrdObject>(_scene.product.get()).get() : nullptr);
  }
  QAVIPLMComponent* Component(const QAV3DRep* bag) { return _scene.components.at(bag).get(); }
  QAV3DRep* Pointed(const char* name) {
    const auto object = Driver().FindObject(name);
    EXPECT_TRUE(object) << name;
    QAV3DRep* rep = nullptr;
    return SUCCEEDED(QAVRbaManipulatorServices::GetPointed3DRep(object.get(), rep)) ? rep : nullptr;
  }

  QAVSceneDocument _scene;
  QAV3DBagRep* _plain = nullptr;
  QAV3DBagRep* _wheel = nullptr;
  QAV3DBagRep* _rim = nullptr;
  QAV3DBagRep* _sub = nullptr;
  QAV3DBagRep* _nut = nullptr;
};

TEST_F(ManipulatorServicesTest, EachRouteFindsTheRepresentationShowingTheObject) {
  EXPECT_EQ(Pointed("Plain"), _plain) << "the leaf object shows itself";
  EXPECT_EQ(Pointed("Rim"), _rim) << "the occurrence of the representation instance";
  EXPECT_EQ(Pointed("Wheel"), _wheel) << "the occurrence of the leaf component";
  EXPECT_EQ(Pointed("Nut"), _nut) << "an instance two levels down";
  EXPECT_EQ(Pointed("Root"), _scene.root.get());

  // Without an active product only the leaf object's own visualisation is left.
  Activate(false);
  EXPECT_EQ(Pointed("Plain"), _plain);
  QAV3DRep* untouched = _plain;
  EXPECT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(Driver().FindObject("Rim").get(), untouched),
            E_FAIL);
  EXPECT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(Driver().FindObject("Nut").get(), untouched),
            E_FAIL);
  EXPECT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(nullptr, untouched), E_FAIL);
  EXPECT_EQ(untouched, _plain) << "a failure leaves the output alone";
}

TEST_F(ManipulatorServicesTest, TheFirstRouteThatGivesARepresentationWins) {
  QAVIPLMComponent* product = QAVQuery<QAVIPrdObject>(_scene.product.get()).get();
  auto object = QAVMakeRef<QAVOmbObjectInContext>();
  object->SetLeafObject(_plain->GetModelObject());
  object->SetLeafInstance(Component(_rim));
  object->AddComponent(product);
  object->AddComponent(Component(_wheel));
  QAV3DRep* rep = nullptr;
  ASSERT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(object.get(), rep), S_OK);
  EXPECT_EQ(rep, _plain) << "the leaf object before the instances";

  // A leaf object shown by nothing: the representation instance comes next,
  // before the path's leaf component.
  object->SetLeafObject(_wheel->GetModelObject());
  ASSERT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(object.get(), rep), S_OK);
  EXPECT_EQ(rep, _rim);

  // A leaf instance that is not a representation instance: the path's leaf
  // component decides, whatever the leaf instance is.
  auto other = QAVMakeRef<QAVOmbObjectInContext>();
  other->SetLeafObject(_wheel->GetModelObject());
  other->SetLeafInstance(Component(_wheel));
  for (QAVIPLMComponent* component : {product, Component(_sub), Component(_nut)})
    other->AddComponent(component);
  ASSERT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(other.get(), rep), S_OK);
  EXPECT_EQ(rep, _nut);

  // A path ending on the product itself leads nowhere.
  auto top = QAVMakeRef<QAVOmbObjectInContext>();
  top->AddComponent(product);
  rep = nullptr;
  EXPECT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(top.get(), rep), E_FAIL);
  EXPECT_EQ(rep, nullptr);
}

TEST_F(ManipulatorServicesTest, TheWalkSkipsTheRootMatrixAndMultipliesTheBagsBelow) {
  // The root is moved by (100, 0, 0), Plain by (1, 2, 3): measured from the
  // root, only Plain's move applies; measured from Plain, none does.
  float s[3] = {};
  float c[3] = {};
  ASSERT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(_plain, s[0], s[1], s[2], c[0],
                                                                  c[1], c[2]),
            S_OK);
  EXPECT_EQ(std::vector<float>(s, s + 3), (std::vector<float>{2, 4, 6}));
  EXPECT_EQ(std::vector<float>(c, c + 3), (std::vector<float>{0, 0, 0}));

  auto wrapper = QAVMakeRef<QAV3DBagRep>();
  wrapper->SetMatrix(QAV4x4Matrix({1, 0, 0, 10, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
  wrapper->AddChild(qavtest::Square(1, nullptr).get());
  ASSERT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(wrapper.get(), s[0], s[1], s[2],
                                                                  c[0], c[1], c[2]),
            S_OK);
  EXPECT_EQ(c[0], 0.0F) << "the root's own matrix is not applied";
  auto outer = QAVMakeRef<QAV3DBagRep>();
  outer->AddChild(wrapper.get());
  ASSERT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(outer.get(), s[0], s[1], s[2],
                                                                  c[0], c[1], c[2]),
            S_OK);
  EXPECT_EQ(c[0], 10.0F) << "one level down it is";
  EXPECT_EQ(s[0], 2.0F);

  // Nested bags A (scale 2) over B (move by 1 in x): A x B sends x to 2 (x + 1),
  // so the square [-1, 1] becomes [0, 4] (B x A would give [-1, 3]).
  auto b = qavtest::Moved(qavtest::Square(1, nullptr).get(), 1, 0, 0, nullptr);
  auto a = QAVMakeRef<QAV3DBagRep>();
  a->SetMatrix(QAV4x4Matrix({2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1}));
  a->AddChild(b.get());
  auto top = QAVMakeRef<QAV3DBagRep>();
  top->AddChild(a.get());
  ASSERT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(top.get(), s[0], s[1], s[2], c[0],
                                                                  c[1], c[2]),
            S_OK);
  EXPECT_EQ(s[0], 4.0F);
  EXPECT_EQ(c[0], 2.0F);
  EXPECT_EQ(s[1], 4.0F);

  // The list itself: the geometry leaves only, parents before children, each
  // with its accumulated matrix; the starting matrix is applied too.
  const QAV4x4Matrix start({1, 0, 0, 0, 0, 1, 0, 7, 0, 0, 1, 0, 0, 0, 0, 1});
  std::vector<GeomWithTransform> list;
  const unsigned long before = b->GetChild(0)->GetRefCount();
  QAVRbaManipulatorServices::GetSupportGeometry(top.get(), list, start, true);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].rep, b->GetChild(0));
  EXPECT_EQ(list[0].rep->GetRefCount(), before + 1) << "the record holds a reference";
  EXPECT_EQ(list[0].transform, start * *a->GetMatrix() * *b->GetMatrix());
  list[0].rep->Release();
  list.clear();
  QAVRbaManipulatorServices::GetSupportGeometry(_scene.root.get(), list, QAV4x4Matrix(), false);
  ASSERT_EQ(list.size(), 4U) << "Plain, Wheel, Rim's box and Nut";
  EXPECT_EQ(list[0].rep, _plain->GetChild(0));
  EXPECT_EQ(list[1].rep, _wheel->GetChild(0));
  EXPECT_EQ(list[2].rep, Bag(_rim, 0)->GetChild(0));
  EXPECT_EQ(list[3].rep, _nut->GetChild(0));
  EXPECT_EQ(list[2].transform(0, 3), 105.0);
  EXPECT_EQ(list[2].transform(2, 3), 3.0);
  for (const GeomWithTransform& record : list)
    record.rep->Release();
  list.clear();
  QAVRbaManipulatorServices::GetSupportGeometry(nullptr, list, QAV4x4Matrix(), false);
  EXPECT_TRUE(list.empty());
}

TEST_F(ManipulatorServicesTest, TheBoxIsThatOfThePointsPlacedOneByOneInSinglePrecision) {
  // Points placed by a turned and moved bag and by a projective one: the box
  // is exactly the one of the points placed one by one.
  std::vector<float> positions(300);
  for (int i = 0; i < 300; ++i)
    positions[static_cast<std::size_t>(i)] = static_cast<float>(std::sin(i * 1.7) * (i % 7 + 1));
  for (const QAV4x4Matrix& matrix :
       {QAV4x4Matrix({0.8, -0.6, 0, 3.3, 0.6, 0.8, 0, -1.7, 0, 0, 1, 0.1, 0, 0, 0, 1}),
        QAV4x4Matrix({1, 0.2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0.01, 0, 0.02, 1})}) {
    auto leaf = QAVMakeRef<QAVSurfacicRep>();
    ASSERT_TRUE(leaf->SetGeometry(positions, {}, {}));
    auto bag = QAVMakeRef<QAV3DBagRep>();
    bag->SetMatrix(matrix);
    bag->AddChild(leaf.get());
    auto root = QAVMakeRef<QAV3DBagRep>();
    root->AddChild(bag.get());
    constexpr float big = std::numeric_limits<float>::max();
    float lo[3] = {big, big, big};
    float hi[3] = {-big, -big, -big};
    for (std::size_t i = 0; i < positions.size(); i += 3) {
      const QAVMathPointf p =
          matrix * QAVMathPointf(positions[i], positions[i + 1], positions[i + 2]);
      const float xyz[3] = {p.x, p.y, p.z};
      for (int k = 0; k < 3; ++k) {
        lo[k] = std::min(lo[k], xyz[k]);
        hi[k] = std::max(hi[k], xyz[k]);
      }
    }
    float s[3];
    float c[3];
    ASSERT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(root.get(), s[0], s[1], s[2],
                                                                    c[0], c[1], c[2]),
              S_OK);
    for (int k = 0; k < 3; ++k) {
      EXPECT_EQ(s[k], hi[k] - lo[k]) << k;
      EXPECT_EQ(c[k], (hi[k] - lo[k]) * 0.5F + lo[k]) << k;
    }
  }
}

TEST_F(ManipulatorServicesTest, DegenerateGeometryAndItsFallbacks) {
  float s[3] = {-7, -7, -7};
  float c[3] = {-7, -7, -7};
  EXPECT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(nullptr, s[0], s[1], s[2], c[0],
                                                                  c[1], c[2]),
            E_FAIL);
  EXPECT_EQ(s[0], -7.0F) << "untouched";
  EXPECT_EQ(c[2], -7.0F);

  // Nothing below: the unit box at the origin.
  auto empty = QAVMakeRef<QAV3DBagRep>();
  empty->AddChild(QAVMakeRef<QAV3DBagRep>().get());
  EXPECT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(empty.get(), s[0], s[1], s[2],
                                                                  c[0], c[1], c[2]),
            S_FALSE);
  EXPECT_EQ(std::vector<float>(s, s + 3), (std::vector<float>{1, 1, 1}));
  EXPECT_EQ(std::vector<float>(c, c + 3), (std::vector<float>{0, 0, 0}));

  // One vertex: no size, the vertex is the centre.
  auto point = QAVMakeRef<QAVSurfacicRep>();
  ASSERT_TRUE(point->SetGeometry({1, 2, 3}, {}, {}));
  EXPECT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(point.get(), s[0], s[1], s[2],
                                                                  c[0], c[1], c[2]),
            S_OK);
  EXPECT_EQ(std::vector<float>(s, s + 3), (std::vector<float>{0, 0, 0}));
  EXPECT_EQ(std::vector<float>(c, c + 3), (std::vector<float>{1, 2, 3}));

  // Geometry without a vertex counts as geometry: the extremes stay at their
  // starting values and the size overflows to minus infinity.
  auto bare = QAVMakeRef<QAVSurfacicRep>();
  EXPECT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(bare.get(), s[0], s[1], s[2],
                                                                  c[0], c[1], c[2]),
            S_OK);
  const float minusInfinity = -std::numeric_limits<float>::infinity();
  EXPECT_EQ(std::vector<float>(s, s + 3),
            (std::vector<float>{minusInfinity, minusInfinity, minusInfinity}));
  EXPECT_EQ(c[0], minusInfinity);

  // Measured through an object, the unit box passes as a success.
  auto bagOnly = QAVMakeRef<QAV3DBagRep>();
  bagOnly->SetModelObject(QAVMakeRef<QAVModelObject>("Part", "Ghost").get());
  ASSERT_TRUE(bagOnly->PublishAsVisu());
  auto ghost = QAVMakeRef<QAVOmbObjectInContext>();
  ghost->SetLeafObject(bagOnly->GetModelObject());
  QAVMathPoint centre(9, 9, 9);
  QAVMathPoint size;
  EXPECT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(ghost.get(), centre, size), S_OK);
  EXPECT_EQ(centre, QAVMathPoint(0, 0, 0));
  EXPECT_EQ(size, QAVMathPoint(1, 1, 1));
}

TEST_F(ManipulatorServicesTest, SupportSizeAndCentreByRepresentationOrFace) {
  QAVMathPoint centre;
  QAVMathPoint size;
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Plain").get(),
                                                               centre, size),
            S_OK);
  EXPECT_EQ(size, QAVMathPoint(2, 4, 6)) << "Plain shows itself: its faces are not used";
  EXPECT_EQ(centre, QAVMathPoint(0, 0, 0));

  // Wheel is shown through its occurrence, but its object has a face (the
  // quad 4 x 2): the face gives the centre and the size, in the part's space.
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Wheel").get(),
                                                               centre, size),
            S_OK);
  EXPECT_EQ(size, QAVMathPoint(4, 2, 0));
  EXPECT_EQ(centre, QAVMathPoint(0, 0, 0));

  // Rim has no face: the box of its occurrence's representation, whose child
  // is moved by (0, 0, 2).
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Rim").get(),
                                                               centre, size),
            S_OK);
  EXPECT_EQ(size, QAVMathPoint(1, 1, 1));
  EXPECT_EQ(centre, QAVMathPoint(0, 0, 2));
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Nut").get(),
                                                               centre, size),
            S_OK);
  EXPECT_NEAR(size.z, 2.0, 1e-6);
  EXPECT_NEAR(centre.z, 0.0, 1e-6);

  // The root shows itself: its faces are not looked at (it has none anyway).
  ASSERT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Root").get(),
                                                               centre, size),
            S_OK);
  // In z, from the sphere's -1 to Plain's 3 + 3 = 6 (the root's own move is not
  // applied).
  EXPECT_EQ(size.z, 7.0);
  EXPECT_EQ(centre.z, 2.5);

  // Nothing found: a failure, outputs untouched.
  Activate(false);
  centre = {7, 7, 7};
  size = {8, 8, 8};
  EXPECT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Rim").get(),
                                                               centre, size),
            E_FAIL);
  EXPECT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(nullptr, centre, size), E_FAIL);
  EXPECT_EQ(centre, QAVMathPoint(7, 7, 7));
  EXPECT_EQ(size, QAVMathPoint(8, 8, 8));
  // The face route needs no product.
  EXPECT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(Driver().FindObject("Wheel").get(),
                                                               centre, size),
            S_OK);
}

TEST_F(ManipulatorServicesTest, ReferenceCountsComeBackWhereTheyBegan) {
  std::vector<QAVBaseUnknown*> watched = {_scene.root.get(), _scene.product.get()};
  watched.reserve(32);
  for (QAV3DBagRep* bag : {_plain, _wheel, _rim, _sub, _nut}) {
    watched.push_back(bag);
    watched.push_back(bag->GetModelObject());
    if (bag->GetChildCount() > 0) watched.push_back(bag->GetChild(0));
  }
  for (const auto& [bag, component] : _scene.components)
    watched.push_back(component.get());
  std::vector<unsigned long> before;
  before.reserve(watched.size());
  for (QAVBaseUnknown* object : watched)
    before.push_back(object->GetRefCount());

  for (const char* name : {"Plain", "Wheel", "Rim", "Sub", "Nut", "Root"}) {
    const auto object = Driver().FindObject(name);
    ASSERT_TRUE(object) << name;
    QAV3DRep* rep = nullptr;
    EXPECT_EQ(QAVRbaManipulatorServices::GetPointed3DRep(object.get(), rep), S_OK) << name;
    QAVMathPoint centre;
    QAVMathPoint size;
    EXPECT_EQ(QAVRbaManipulatorServices::GetSupportSizeAndCenter(object.get(), centre, size), S_OK);
    float s[3];
    float c[3];
    EXPECT_EQ(QAVRbaManipulatorServices::ComputeBoundingBoxFor3DRep(rep, s[0], s[1], s[2], c[0],
                                                                    c[1], c[2]),
              S_OK);
  }
  for (std::size_t i = 0; i < watched.size(); ++i)
    EXPECT_EQ(watched[i]->GetRefCount(), before[i]) << "object " << i;
}

}  // namespace
