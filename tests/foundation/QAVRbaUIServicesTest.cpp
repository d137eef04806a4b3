#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "QAV3DRep.h"
#include "QAVFrmContext.h"
#include "QAVFrmEditor.h"
#include "QAVHostDriver.h"
#include "QAVModelObject.h"
#include "QAVRbaUIServices.h"
#include "QAVSceneObjects.h"
#include "QAVTestSupport.h"

namespace {

class UIServicesTest : public qavtest::HostTest {
 protected:
  static bool Check(const char* name) {
    QAVString type(name);
    return QAVRbaUIServices::CheckShaderType(type);
  }
};

TEST_F(UIServicesTest, ShaderTypesAreFixedByTheFirstCall) {
  SetEnvAndReload("QAVMatPBRSubtypesEnable", std::nullopt);
  EXPECT_TRUE(Check("EVisu_PBR_22x_Metal"));
  std::vector<QAVString> names = QAVRbaUIServices::GetSupportedShaderTypes();
  ASSERT_EQ(names.size(), 48U);
  EXPECT_EQ(names.front(), "EVisu_PBR_22x_Basic");
  EXPECT_EQ(names[9], "EVisu_PBR_22x");
  EXPECT_EQ(names.back(), "mip_metallic_paint");
  for (const QAVString& name : names)
    EXPECT_TRUE(Check(name.c_str())) << name.c_str();
  // Exact and case-sensitive: no other spelling, no part of a name.
  for (const char* name : {"evisu_pbr", "EVISU_PBR", "EVisu_PBR ", "MPM", "", "diamonds"})
    EXPECT_FALSE(Check(name)) << '"' << name << '"';

  {
    // Set after the first call: the list stays as it was made.
    const qavtest::ScopedEnv late("QAVMatPBRSubtypesEnable", "1");
    EXPECT_TRUE(Check("EVisu_PBR_22x_Wood"));
  }

  // A process that starts with the variable set, even empty, goes without the
  // nine subtypes of the 22x shader.
  SetEnvAndReload("QAVMatPBRSubtypesEnable", "");
  EXPECT_FALSE(Check("EVisu_PBR_22x_Metal"));
  EXPECT_TRUE(Check("EVisu_PBR_22x"));
  EXPECT_TRUE(Check("diamond"));
  names = QAVRbaUIServices::GetSupportedShaderTypes();
  ASSERT_EQ(names.size(), 39U);
  EXPECT_EQ(names.front(), "EVisu_PBR_22x");
}

TEST_F(UIServicesTest, ConcurrentFirstCallsShareOneList) {
  SetEnvAndReload("QAVMatPBRSubtypesEnable", std::nullopt);
  std::atomic<int> found{0};
  std::vector<std::thread> threads;
  threads.reserve(8);
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&found] {
      for (int i = 0; i < 200; ++i)
        found += (Check("mip_car_paint") ? 1 : 0) + (Check("EVisu_PBR_22x_Glass") ? 1 : 0);
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(found.load(), 8 * 200 * 2);
  EXPECT_EQ(QAVRbaUIServices::GetSupportedShaderTypes().size(), 48U);
}

TEST_F(UIServicesTest, PathRunsFromTheEditedRootToTheRepresentation) {
  QAVPathElement untouched;
  QAVPathElement* path = &untouched;
  auto loose = QAVMakeRef<QAVModelObject>("QAVPart");
  EXPECT_EQ(QAVRbaUIServices::BuildPathElement(nullptr, &path), E_FAIL);
  EXPECT_EQ(QAVRbaUIServices::BuildPathElement(loose.get(), nullptr), E_FAIL);
  // Nothing is edited yet.
  EXPECT_EQ(QAVRbaUIServices::BuildPathElement(loose.get(), &path), E_FAIL);
  EXPECT_EQ(path, &untouched);

  const std::string text = R"({"format": "qav-scene", "version": 1,
    "window": {"width": 200, "height": 100},
    "viewpoint": {"eye": [0, -10, 0], "target": [0, 0, 0], "up": [0, 0, 1], "fieldOfView": 40},
    "workbench": "Design",
    "root": {"class": "QAVProduct", "name": "Studio", "children": [
      {"class": "QAVPart", "name": "Block", "shape": {"box": [1, 1, 1]}},
      {"class": "QAVPart", "name": "Marker"}]}})";
  std::string error;
  ASSERT_EQ(Driver().OpenScene(_scratch.Write("scene.json", text).string(), error), S_OK) << error;
  const QAVSceneDocument& scene = *Driver().GetScene();
  // The editor's path starts with the document, which no built path holds.
  ASSERT_EQ(QAVFrmEditor::GetCurrentEditor()->GetPathElement().GetSize(), 2);
  QAVModelObject* root = scene.root->GetModelObject();
  QAV3DRep* blockBag = scene.root->GetChild(0);
  auto* blockGeometry = dynamic_cast<QAV3DBagRep*>(blockBag)->GetChild(0);
  QAVBaseUnknown* block = QAVSceneObjects::Find(scene, "Block")->GetLeafObject();
  QAVBaseUnknown* marker = QAVSceneObjects::Find(scene, "Marker")->GetLeafObject();

  // Outside the ambience workbench: the geometry of the object's representation.
  ASSERT_EQ(QAVRbaUIServices::BuildPathElement(block, &path), S_OK);
  auto built = QAVRef<QAVPathElement>::Adopt(path);
  ASSERT_EQ(built->GetSize(), 2);
  EXPECT_EQ(built->GetRoot(), root);
  EXPECT_EQ(built->GetLeaf(), blockGeometry);
  EXPECT_EQ(built->GetRefCount(), 1U);
  // Shown by a representation without geometry of its own: the editor's path.
  ASSERT_EQ(QAVRbaUIServices::BuildPathElement(marker, &path), S_OK);
  built = QAVRef<QAVPathElement>::Adopt(path);
  ASSERT_EQ(built->GetSize(), 1);
  EXPECT_EQ(built->GetRoot(), root);

  // In the ambience workbench: the representation that shows the object.
  QAVFrmContext::SetContext(QAVMakeRef<QAVFrmContext>("RenderingAmbienceWorkbench").get());
  ASSERT_EQ(QAVRbaUIServices::BuildPathElement(block, &path), S_OK);
  built = QAVRef<QAVPathElement>::Adopt(path);
  ASSERT_EQ(built->GetSize(), 2);
  EXPECT_EQ(built->GetLeaf(), blockBag);

  // Without an editor the new path is dropped.
  QAVFrmEditor::SetCurrentEditor(nullptr);
  path = &untouched;
  EXPECT_EQ(QAVRbaUIServices::BuildPathElement(block, &path), E_FAIL);
  EXPECT_EQ(path, &untouched);
}

TEST_F(UIServicesTest, SecurityParametersAreTheFirstTwoOfTheHosts) {
  Driver().SetSecurityParameters("Designer", "Studio North", "Design Studio", "Private");
  QAVString first;
  QAVString second;
  ASSERT_EQ(QAVRbaUIServices::GetSecurityParameters(first, second), S_OK);
  EXPECT_EQ(first, "Designer");
  EXPECT_EQ(second, "Studio North");
  Driver().SetSecurityUnavailable(true);
  EXPECT_EQ(QAVRbaUIServices::GetSecurityParameters(first, second), E_FAIL);
}

class ShaderCliTest : public qavtest::ProgramTest {};

TEST_F(ShaderCliTest, StatusSaysWhetherEveryNameIsSupported) {
  qavtest::ScopedEnv unset("QAVMatPBRSubtypesEnable", std::nullopt);
  qavtest::ProgramRun run = Run("shader check diamond EVisu_PBR_22x_Metal");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "diamond\tsupported\nEVisu_PBR_22x_Metal\tsupported\n");
  run = Run("shader check diamond evisu_pbr");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "diamond\tsupported\nevisu_pbr\tnot supported\n");
  run = Run("shader list");
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 48);
  run = Run("shader check");
  EXPECT_EQ(run.status, 2);
}

}  // namespace
