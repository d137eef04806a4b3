// Scene files: what a 3D window shows, written as JSON.
//
// {
//   "format": "qav-scene", "version": 1,
//   "window": {"width": 1280, "height": 720,            // pixels of the graphic area
//              "usable": {"width": 1280, "height": 680}},  // optional; default the whole
//   "viewpoint": {"eye": [x, y, z], "target": [x, y, z], "up": [x, y, z],
//                 "fieldOfView": 40},         // vertical, whole angle, degrees
//   "environment": "Studio",      // optional: the viewer's infinite environment name
//   "workbench": "Design",        // optional: the current workbench name
//   "product": {"name": "Car",    // optional: the active product ("class" optional,
//               "ambiences": ["Sunset", "Studio"]},  // default "QAVProduct"), with the
//                                 // named members of its "QAVRamAmbienceContainer"
//   "root": NODE
// }
//
// NODE: {"class": "Bracket", "name": "Front bracket",   // both optional
//        "matrix": [16 numbers, row by row],              // or any of the three below
//        "translate": [x, y, z], "rotate": {"axis": [x, y, z], "degrees": a},
//        "scale": s or [sx, sy, sz],                       // applied scale, rotate, translate
//        "mesh": "meshes/bracket.stl",                      // relative to the scene file
//        "shape": {"box": [sx, sy, sz]} or {"quad": [w, h]} or
//                 {"sphere": r, "segments": 24},            // centred on the origin
//        "plm": "instance" or "rep",                         // optional, see below
//        "children": [NODE, ...]}
//
// Numbers. Window sides (and the usable area's, at most the window's) are
// from 1 to QAVGraphicWindow::kMaxWindowSide (8192) pixels, fractions allowed.
// Every number is finite and within single precision (3.40282347e+38 either
// way); every vertex, in its node's space and placed into the space of each
// node above it, stays within half of that (so that the size between two
// vertices fits), and the placements composed from any node down to a leaf's
// within single precision. The first number that is not is named, with its
// value, and the whole file is refused.
//
// Placement. "matrix" is row by row, points are columns multiplied on its
// right (p' = M p, the translation in the last column); a node's matrix
// places its content in its father's space, so a leaf's vertex reaches the
// scene's space as M_root ... M_node p. The parts give M = T R S: scaled
// first, then turned by `degrees` about `axis` (right-handed: a quarter turn
// about +z takes +x to +y), then moved. The viewpoint's up need not be square
// to the line of sight: the view's up is its part square to it. A sphere has
// `segments` meridians (3 to 512, default 24) and segments / 2 + 1 bands from
// +z to -z, its vertices on the sphere: 2 segments (segments / 2 + 1)
// triangles, the 2 segments at the poles without area.
//
// Every node becomes a bag representation standing for a model object of its
// class (none without "class") with its name, placed by its matrix; its mesh
// or shape (at most one) becomes a surfacic leaf under it, standing for no
// object of its own. A quad lies in z = 0 facing +z. Unknown keys are errors,
// so that a misspelt key is not silently ignored.
//
// The product's structure. A node without "plm" shows its object directly: the
// object's QAVI3DGeoVisu gives the node's bag. A node with "plm" (it needs a
// "class", and the scene a "product") is an element of the product's
// structure instead, and its object is the reference that it places:
// "instance" makes an instance of a product or part (QAVPLMInstance), with one
// occurrence (QAVPLMOccurrence) under the occurrence of the nearest instance
// above it (or the product's root occurrence); "rep" makes an instance of a
// representation (QAVPLMRepInstance), with one representation occurrence held
// by that same occurrence. Each occurrence gives its node's bag through
// QAVI3DGeoVisu; the root occurrence gives the root's bag.
//
// The faces of an object (QAVIFaceList) are those of its node's shape: one
// for a quad, six for a box, in the node's own space; none for meshes and
// spheres. A box's leaf has the same six faces as graphic primitives, so a
// pick's sub-element is the index of the face hit (0 for every other shape).
#ifndef QAVSceneReader_h
#define QAVSceneReader_h

#include <map>
#include <string>
#include <string_view>

#include "QAV3DRep.h"
#include "QAVIPLMComponent.h"
#include "QAVIPLMNavOccurrence.h"
#include "QAVMathPoint.h"
#include "QAVModelObject.h"
#include "QAVRef.h"
#include "QAVTypes.h"

struct QAVHOST_API QAVSceneDocument {
  QAVRef<QAV3DBagRep> root;
  float width = 0.0F;
  float height = 0.0F;
  float usableWidth = 0.0F;
  float usableHeight = 0.0F;
  QAVMathPoint eye;
  QAVMathPoint target;
  QAVMathVector up;
  double fieldOfView = 0.0;
  std::string environment;
  std::string workbench;
  QAVRef<QAVModelObject> product;  // null without "product"
  // The product's root occurrence (null without "product") and the element of
  // its structure that each "plm" node's bag stands for.
  QAVRef<QAVIPLMNavOccurrence> rootOccurrence;
  std::map<const QAV3DRep*, QAVRef<QAVIPLMComponent>> components;
  int leafCount = 0;
  long long triangleCount = 0;
};

class QAVHOST_API QAVSceneReader {
 public:
  // Reads a scene file. S_OK with `scene` filled; E_FAIL with `error` naming the
  // file, the place in it ("root.children[1].matrix") and what is wrong, and
  // `scene` as it was: a scene is used whole or not at all.
  static HRESULT Read(const std::string& path, QAVSceneDocument& scene, std::string& error);
  // The same from text, meshes found relative to `directory`.
  static HRESULT Parse(std::string_view text, const std::string& directory, QAVSceneDocument& scene,
                       std::string& error);

  QAVSceneReader() = delete;
};

#endif
