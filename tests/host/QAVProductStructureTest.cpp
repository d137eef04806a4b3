// The product structure of a scene: instances, occurrences and what shows
// them, objects found in their context, faces, the rendering model's geometry
// of representations, and single-precision points placed by matrices.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAVFace.h"
#include "QAVI3DGeoVisu.h"
#include "QAVIFaceList.h"
#include "QAVIPLMNavInstance.h"
#include "QAVIPLMNavRepInstance.h"
#include "QAVIPrdObject.h"
#include "QAVIRbaGeometry.h"
#include "QAVMathBox.h"
#include "QAVMathDirectionf.h"
#include "QAVSceneObjects.h"
#include "QAVSceneReader.h"
#include "QAVTestScenes.h"
#include "QAVTestSupport.h"

namespace {

std::string Scene(const std::string& product, const std::string& root) {
  return R"({"format": "qav-scene", "version": 1, "window": {"width": 10, "height": 10},
             "viewpoint": {"eye": [0, 0, 9], "target": [0, 0, 0], "up": [0, 1, 0]},)" +
         product + R"("root": )" + root + "}";
}

QAV3DRep* GiveRep(QAVBaseUnknown* object) {
  const auto visu = QAVQuery<QAVI3DGeoVisu>(object);
  return visu ? visu->GiveRep() : nullptr;
}

class ProductStructureTest : public qavtest::HostTest {};

TEST_F(ProductStructureTest, PlmNodesAreCheckedWithTheirPlace) {
  QAVSceneDocument scene;
  std::string error;
  const std::string product = R"("product": {"name": "Car"},)";
  EXPECT_EQ(QAVSceneReader::Parse(Scene(product, R"({"children": [{"plm": "instance"}]})"), ".",
                                  scene, error),
            E_FAIL);
  EXPECT_EQ(error, "root.children[0].plm: a node with a \"class\" expected");
  EXPECT_EQ(QAVSceneReader::Parse(Scene("", R"({"class": "A", "plm": "rep"})"), ".", scene, error),
            E_FAIL);
  EXPECT_EQ(error, "root.plm: a scene with a \"product\" expected");
  EXPECT_EQ(
      QAVSceneReader::Parse(Scene(product, R"({"class": "A", "plm": "part"})"), ".", scene, error),
      E_FAIL);
  EXPECT_EQ(error, "root.plm: \"instance\" or \"rep\" expected");
  EXPECT_EQ(scene.root, nullptr) << "nothing read";
}

TEST_F(ProductStructureTest, OccurrencesFollowTheInstancesAndShowTheirNodes) {
  // A product of a custom class; an instance A twice (two occurrences of one
  // reference are two instances here: one per node) and a representation
  // under the first.
  const std::string text =
      Scene(R"("product": {"name": "Car", "class": "Vehicle"},)", R"({"children": [
        {"class": "Axle", "name": "A1", "plm": "instance", "translate": [1, 0, 0], "children": [
          {"class": "Shape", "name": "S", "plm": "rep", "shape": {"quad": [1, 1]}},
          {"class": "Bolt", "name": "B", "plm": "instance"}]},
        {"class": "Axle", "name": "A2", "plm": "instance"},
        {"class": "Part", "name": "P", "shape": {"box": [2, 4, 6]}}]})");
  QAVSceneDocument scene;
  std::string error;
  ASSERT_EQ(QAVSceneReader::Parse(text, ".", scene, error), S_OK) << error;
  auto product = QAVQuery<QAVIPrdObject>(scene.product.get());
  ASSERT_TRUE(product) << "a class derived from QAVProduct";
  EXPECT_EQ(product->GetReference(), scene.product.get());
  QAVIPLMNavOccurrence* root = product->GetRootOccurrence();
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root, scene.rootOccurrence.get());
  EXPECT_EQ(root->GetInstance(), nullptr);
  EXPECT_EQ(GiveRep(root), scene.root.get());
  ASSERT_EQ(root->GetChildCount(), 2);
  EXPECT_EQ(root->GetRepOccurrenceCount(), 0);

  auto* a1 = dynamic_cast<QAV3DBagRep*>(scene.root->GetChild(0));
  QAVIPLMNavOccurrence* first = root->GetChild(0);
  EXPECT_EQ(GiveRep(first), a1);
  EXPECT_EQ(first->GetInstance(), scene.components.at(a1).get());
  EXPECT_EQ(first->GetInstance()->GetReference(), a1->GetModelObject());
  EXPECT_EQ(GiveRep(a1->GetModelObject()), nullptr) << "an instance's reference is not shown";
  ASSERT_EQ(first->GetChildCount(), 1);
  ASSERT_EQ(first->GetRepOccurrenceCount(), 1);
  QAV3DRep* shape = a1->GetChild(0);
  EXPECT_EQ(GiveRep(first->GetRepOccurrence(0)), shape);
  EXPECT_EQ(first->GetRepOccurrence(0)->GetRepInstance(), scene.components.at(shape).get());

  // Instances list their occurrences under a root.
  const auto instance = QAVQuery<QAVIPLMNavInstance>(first->GetInstance());
  std::vector<QAVRef<QAVIPLMNavOccurrence>> occurrences;
  EXPECT_EQ(instance->ListOccurrences(root, occurrences), S_OK);
  ASSERT_EQ(occurrences.size(), 1U);
  EXPECT_EQ(occurrences[0].get(), first);
  EXPECT_EQ(instance->ListOccurrences(root->GetChild(1), occurrences), S_OK);
  EXPECT_EQ(occurrences.size(), 1U) << "not under the other axle";
  EXPECT_EQ(instance->ListOccurrences(nullptr, occurrences), E_FAIL);
  const auto repInstance = QAVQuery<QAVIPLMNavRepInstance>(scene.components.at(shape).get());
  std::vector<QAVRef<QAVIPLMNavRepOccurrence>> repOccurrences;
  EXPECT_EQ(repInstance->ListRepOccurrences(root, repOccurrences), S_OK);
  ASSERT_EQ(repOccurrences.size(), 1U);
  EXPECT_EQ(GiveRep(repOccurrences[0].get()), shape);

  // A plain node shows its object; the object forgets it when it goes.
  auto* part = scene.root->GetChild(2);
  QAVRef<QAVModelObject> partObject(part->GetModelObject());
  EXPECT_EQ(GiveRep(partObject.get()), part);
  product.Reset();  // it holds its root occurrence, which holds the scene
  occurrences.clear();
  repOccurrences.clear();
  scene = QAVSceneDocument();
  EXPECT_EQ(GiveRep(partObject.get()), nullptr);
}

TEST_F(ProductStructureTest, ObjectsAreFoundInTheirContextWithTheirFaces) {
  const std::string text = Scene(R"("product": {"name": "Car"},)", R"({"children": [
        {"class": "Axle", "name": "A", "plm": "instance", "children": [
          {"class": "Shape", "name": "S", "plm": "rep", "shape": {"box": [2, 4, 6]}},
          {"class": "Part", "name": "P", "translate": [0, 0, 5], "shape": {"quad": [2, 1]}}]},
        {"class": "Part", "name": "P"}]})");
  std::string error;
  QAVSceneDocument scene;
  ASSERT_EQ(QAVSceneReader::Parse(text, ".", scene, error), S_OK) << error;
  EXPECT_EQ(Driver().FindObject("S"), nullptr) << "no scene shown";
  Driver().ShowScene(scene);
  EXPECT_EQ(Driver().FindObject("missing"), nullptr);

  const auto s = Driver().FindObject("S");
  ASSERT_TRUE(s);
  auto* axle = scene.root->GetChild(0);
  auto* shape = dynamic_cast<QAV3DBagRep*>(axle)->GetChild(0);
  EXPECT_EQ(s->GetLeafObject(), shape->GetModelObject());
  EXPECT_EQ(s->GetLeafInstance(), scene.components.at(shape).get());
  std::vector<QAVIPLMComponent*> components;
  s->ListComponents(components);
  ASSERT_EQ(components.size(), 3U);
  EXPECT_EQ(components[0], QAVQuery<QAVIPrdObject>(scene.product.get()).get());
  EXPECT_EQ(components[1], scene.components.at(axle).get());
  EXPECT_EQ(components[2], scene.components.at(shape).get());
  for (QAVIPLMComponent* component : components)
    component->Release();

  // The first of two objects of the same name, depth first: the one inside
  // the axle, with the axle's instance as its leaf component but no instance
  // of its own.
  const auto p = Driver().FindObject("P");
  ASSERT_TRUE(p);
  EXPECT_EQ(GiveRep(p->GetLeafObject()), dynamic_cast<QAV3DBagRep*>(axle)->GetChild(1));
  EXPECT_EQ(p->GetLeafInstance(), nullptr);
  EXPECT_EQ(p->GetComponentCount(), 2);

  // Faces: six for a box, in the node's own space; one for the quad.
  std::vector<QAVRef<QAVFace>> faces;
  ASSERT_EQ(QAVQuery<QAVIFaceList>(s->GetLeafObject())->ListFaces(faces), S_OK);
  ASSERT_EQ(faces.size(), 6U);
  QAVMathBox all;
  for (const auto& face : faces) {
    QAVMathBox box;
    face->GetBoundingBox(box);
    all.AddPoint(box.GetMin());
    all.AddPoint(box.GetMax());
    QAVMathPoint centre;
    face->GetPoint(0.0, centre);
    EXPECT_EQ(centre, QAVMathPoint((box.GetMin().x + box.GetMax().x) / 2,
                                   (box.GetMin().y + box.GetMax().y) / 2,
                                   (box.GetMin().z + box.GetMax().z) / 2));
  }
  double limits[6];
  all.GetLimits(limits[0], limits[1], limits[2], limits[3], limits[4], limits[5]);
  EXPECT_EQ(std::vector<double>(limits, limits + 6), (std::vector<double>{-1, 1, -2, 2, -3, 3}));
  faces.clear();
  QAVQuery<QAVIFaceList>(p->GetLeafObject())->ListFaces(faces);
  ASSERT_EQ(faces.size(), 1U);
  QAVMathPoint end;
  faces[0]->GetPoint(1.0, end);
  EXPECT_EQ(end, QAVMathPoint(1, 0, 0)) << "the middle of a side at 1";
  faces.clear();
  QAVQuery<QAVIFaceList>(scene.product.get())->ListFaces(faces);
  EXPECT_TRUE(faces.empty());
}

TEST_F(ProductStructureTest, SurfacicRepsGiveTheirArraysToTheRenderingModel) {
  auto square = qavtest::Square(1, nullptr);
  const auto geometry = QAVQuery<QAVIRbaGeometry>(square.get());
  ASSERT_TRUE(geometry);
  EXPECT_EQ(geometry->GetGeometryCount(), 1);
  const float* vertices = nullptr;
  const float* normals = nullptr;
  const std::uint32_t* indices = nullptr;
  int vertexLength = -1;
  int normalLength = -1;
  int indexLength = -1;
  ASSERT_EQ(
      geometry->GetGeometry(0, vertices, vertexLength, normals, normalLength, indices, indexLength),
      S_OK);
  EXPECT_EQ(vertices, square->GetPositions().data());
  EXPECT_EQ(vertexLength, 12);
  EXPECT_EQ(normalLength, 12);
  EXPECT_EQ(indexLength, 6);
  EXPECT_EQ(indices[2], 2U);
  vertexLength = -1;
  EXPECT_EQ(
      geometry->GetGeometry(1, vertices, vertexLength, normals, normalLength, indices, indexLength),
      E_FAIL);
  EXPECT_EQ(vertexLength, -1) << "untouched";
  EXPECT_FALSE(QAVQuery<QAVIRbaGeometry>(QAVMakeRef<QAV3DBagRep>().get())) << "bags have none";
  // The extension shares the representation's references.
  const unsigned long count = square->GetRefCount();
  {
    const auto again = QAVQuery<QAVIRbaGeometry>(square.get());
    EXPECT_EQ(again.get(), geometry.get());
    EXPECT_EQ(square->GetRefCount(), count + 1);
  }
  EXPECT_EQ(square->GetRefCount(), count);
}

TEST_F(ProductStructureTest, SinglePrecisionPointsAndVectors) {
  const QAV4x4Matrix move({2, 0, 0, 1, 0, 3, 0, 2, 0, 0, 4, 3, 0, 0, 0, 1});
  EXPECT_EQ(move * QAVMathPointf(1, 1, 1), QAVMathPointf(3, 5, 7));
  // Coefficients are rounded to float before the product.
  const QAV4x4Matrix fine({1, 0, 0, 0.1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
  EXPECT_EQ((fine * QAVMathPointf(0, 0, 0)).x, 0.1F);
  // A projective last row divides.
  const QAV4x4Matrix projective({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 1, 1});
  EXPECT_EQ(projective * QAVMathPointf(2, 4, 1), QAVMathPointf(1, 2, 0.5F));

  const QAVMathVectorf x(1, 0, 0);
  const QAVMathVectorf y(0, 1, 0);
  QAVMathVectorf v(3, 0, 4);
  EXPECT_EQ(v.Normalize(), 5.0F);
  EXPECT_EQ(QAVMathDirectionf(0, 0, -2), QAVMathVectorf(0, 0, -1));
  const QAV4x4Matrix frame(x, y, x ^ y, QAVMathPointf(5, 6, 7));
  EXPECT_EQ(frame * QAVMathPointf(1, 0, 0), QAVMathPointf(6, 6, 7));
}

}  // namespace
