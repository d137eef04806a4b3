// Triangles read from a 3D file: glTF 2.0 (.gltf, .glb), OBJ (.obj), PLY (.ply)
// or STL (.stl), chosen by the file's extension (any case).
#ifndef QAVMeshReader_h
#define QAVMeshReader_h

#include <string>

#include "QAV3DRep.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAVHOST_API QAVMeshReader {
 public:
  // Reads every triangle of the file into one new surfacic leaf: the meshes of
  // its scene with their nodes' placements applied, polygons split into
  // triangles, points and lines left out, normals from the file or computed
  // when it has none. S_OK with `leaf` set; E_FAIL with `leaf` null and `error`
  // saying why (missing, not a regular file, another format, unreadable or
  // malformed, no triangle, a coordinate that is not finite): a file is used
  // whole or not at all.
  static HRESULT Read(const std::string& path, QAVRef<QAVSurfacicRep>& leaf, std::string& error);

  // Whether the extension of `path` is one of the formats read.
  static bool IsSupported(const std::string& path);

  QAVMeshReader() = delete;
};

#endif
