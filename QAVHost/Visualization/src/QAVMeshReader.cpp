#include "QAVMeshReader.h"

#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <limits>
#include <vector>

namespace {

constexpr std::array<const char*, 5> kExtensions = {".gltf", ".glb", ".obj", ".ply", ".stl"};

std::string LowerExtension(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension;
}

}  // namespace

bool QAVMeshReader::IsSupported(const std::string& path) {
  const std::string extension = LowerExtension(path);
  return std::any_of(kExtensions.begin(), kExtensions.end(),
                     [&extension](const char* known) { return extension == known; });
}

HRESULT QAVMeshReader::Read(const std::string& path, QAVRef<QAVSurfacicRep>& leaf,
                            std::string& error) {
  leaf = nullptr;
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    error = path + ": no such file";
    return E_FAIL;
  }
  if (!std::filesystem::is_regular_file(path, ec)) {
    error = path + ": not a regular file";
    return E_FAIL;
  }
  if (!IsSupported(path)) {
    error = path + ": not a glTF, OBJ, PLY or STL file (by its extension)";
    return E_FAIL;
  }
  Assimp::Importer importer;
  // Points and lines are dropped; what is left is triangles in the file's space.
  importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE,
                              aiPrimitiveType_POINT | aiPrimitiveType_LINE);
  const aiScene* scene = importer.ReadFile(
      path, aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_PreTransformVertices |
                aiProcess_GenNormals | aiProcess_ValidateDataStructure | aiProcess_FindInvalidData);
  if (!scene || (scene->mFlags & AI_SCENE_FLAGS_INCOMPLETE) || !scene->mRootNode) {
    const std::string why = importer.GetErrorString();
    // Removing points and lines may leave nothing: that is a file without triangles.
    if (why.find("No meshes remaining") != std::string::npos)
      error = path + ": no triangle";
    else
      error = path + ": unreadable: " + (why.empty() ? "malformed" : why);
    return E_FAIL;
  }
  std::vector<float> positions;
  std::vector<float> normals;
  std::vector<std::uint32_t> triangles;
  for (unsigned m = 0; m < scene->mNumMeshes; ++m) {
    const aiMesh* mesh = scene->mMeshes[m];
    if (!(mesh->mPrimitiveTypes & aiPrimitiveType_TRIANGLE) || !mesh->mNormals) continue;
    if (positions.size() / 3 + mesh->mNumVertices > std::numeric_limits<std::uint32_t>::max()) {
      error = path + ": too many vertices";
      return E_FAIL;
    }
    const auto base = static_cast<std::uint32_t>(positions.size() / 3);
    for (unsigned v = 0; v < mesh->mNumVertices; ++v) {
      const aiVector3D& p = mesh->mVertices[v];
      const aiVector3D& n = mesh->mNormals[v];
      positions.insert(positions.end(), {p.x, p.y, p.z});
      normals.insert(normals.end(), {n.x, n.y, n.z});
    }
    for (unsigned f = 0; f < mesh->mNumFaces; ++f) {
      const aiFace& face = mesh->mFaces[f];
      if (face.mNumIndices != 3) continue;
      for (unsigned i = 0; i < 3; ++i)
        triangles.push_back(base + face.mIndices[i]);
    }
  }
  if (triangles.empty()) {
    error = path + ": no triangle";
    return E_FAIL;
  }
  // Degenerate normals (NaN from a zero-area face) are replaced by zero; the
  // positions must be finite.
  for (float& value : normals)
    if (!std::isfinite(value)) value = 0.0F;
  auto made = QAVMakeRef<QAVSurfacicRep>();
  if (!made->SetGeometry(std::move(positions), std::move(normals), std::move(triangles))) {
    error = path + ": a coordinate is not finite or an index is out of range";
    return E_FAIL;
  }
  leaf = made;
  return S_OK;
}
