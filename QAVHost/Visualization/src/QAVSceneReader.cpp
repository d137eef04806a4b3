#include "QAVSceneReader.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>
#include <vector>

#include "QAVFaceList.h"
#include "QAVGraphicWindow.h"
#include "QAVMeshReader.h"
#include "QAVPLMInstance.h"
#include "QAVPLMOccurrence.h"
#include "QAVPrdProduct.h"

namespace {

using Json = nlohmann::json;

constexpr std::uintmax_t kMaxFileBytes = 64U << 20U;
constexpr int kMaxDepth = 256;
// Every number of a scene ends up in single precision (the vertices handed to
// the ray-tracing kernel, the sizes and centres of boxes): one beyond its
// range would be infinite there. Vertices stay within half of it, wherever
// they are placed, so that the size between two of them fits too.
constexpr double kMaxNumber = FLT_MAX;
constexpr double kMaxCoordinate = FLT_MAX / 2;

// A number as the errors show it: nine significant digits.
std::string Shown(double value) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "%.9g", value);
  return text;
}

// Reads one scene; the first error stops it.
class Reader {
 public:
  Reader(std::string directory, QAVSceneDocument& scene)
      : _directory(std::move(directory)), _scene(scene) {}

  bool Document(const Json& json);
  const std::string& Error() const { return _error; }

 private:
  bool Fail(const std::string& where, const std::string& what) {
    _error = where + ": " + what;
    return false;
  }
  bool Keys(const Json& object, const std::string& where, std::initializer_list<const char*> known);
  bool Present(const Json& object, const char* key, const std::string& where) {
    return object.contains(key) || Fail(where, "missing");
  }
  bool Number(const Json& json, const std::string& where, double& value);
  bool Positive(const Json& json, const std::string& where, double& value);
  bool Vector(const Json& json, const std::string& where, double (&value)[3]);
  bool Text(const Json& json, const std::string& where, std::string& value);
  bool WindowSide(const Json& json, const std::string& where, double largest, double& value);
  bool Node(const Json& json, const std::string& where, int depth, QAVRef<QAV3DBagRep>& bag);
  bool Fits(const QAV3DTessellatedRep& leaf, const std::string& where);
  bool Placement(const Json& json, const std::string& where, QAV3DBagRep& bag);
  bool Shape(const Json& json, const std::string& where, QAVRef<QAVSurfacicRep>& leaf,
             std::vector<QAVRef<QAVFace>>& faces);
  bool Structure(const Json& json, const std::string& where, QAV3DBagRep& bag);
  void Occurrences(QAV3DRep* rep, QAVPLMOccurrence& current) const;

  std::string _directory;
  QAVSceneDocument& _scene;
  std::string _error;
  // The nodes from the root down to the one being read, each with its
  // placement in the space of the node above it.
  struct Space {
    std::string where;
    QAV4x4Matrix matrix;
  };
  std::vector<Space> _spaces;
};

bool Reader::Keys(const Json& object, const std::string& where,
                  std::initializer_list<const char*> known) {
  if (!object.is_object()) return Fail(where, "an object expected");
  for (const auto& item : object.items()) {
    bool found = false;
    for (const char* key : known)
      found = found || item.key() == key;
    if (!found) return Fail(where, "unknown key \"" + item.key() + "\"");
  }
  return true;
}

bool Reader::Number(const Json& json, const std::string& where, double& value) {
  if (!json.is_number()) return Fail(where, "a number expected");
  value = json.get<double>();
  if (!std::isfinite(value)) return Fail(where, "a finite number expected");
  if (std::abs(value) > kMaxNumber)
    return Fail(where, Shown(value) + " is beyond single precision (at most " + Shown(kMaxNumber) +
                           " either way)");
  return true;
}

bool Reader::WindowSide(const Json& json, const std::string& where, double largest, double& value) {
  if (!Number(json, where, value)) return false;
  if (value < QAVGraphicWindow::kMinWindowSide || value > largest)
    return Fail(where, Shown(value) + " pixels: from " +
                           std::to_string(QAVGraphicWindow::kMinWindowSide) + " to " +
                           Shown(largest) + " expected");
  return true;
}

bool Reader::Positive(const Json& json, const std::string& where, double& value) {
  if (!Number(json, where, value)) return false;
  return value > 0 || Fail(where, "a number above 0 expected");
}

bool Reader::Vector(const Json& json, const std::string& where, double (&value)[3]) {
  if (!json.is_array() || json.size() != 3) return Fail(where, "three numbers expected");
  for (std::size_t i = 0; i < 3; ++i)
    if (!Number(json[i], where + "[" + std::to_string(i) + "]", value[i])) return false;
  return true;
}

bool Reader::Text(const Json& json, const std::string& where, std::string& value) {
  if (!json.is_string()) return Fail(where, "a string expected");
  value = json.get<std::string>();
  return true;
}

bool Reader::Document(const Json& json) {
  if (!Keys(json, "scene",
            {"format", "version", "window", "viewpoint", "environment", "workbench", "product",
             "root"}))
    return false;
  std::string format;
  if (!json.contains("format") || !Text(json["format"], "format", format) || format != "qav-scene")
    return Fail("format", "\"qav-scene\" expected");
  if (!json.contains("version") || !json["version"].is_number_integer() || json["version"] != 1)
    return Fail("version", "1 expected");

  if (!json.contains("window")) return Fail("window", "missing");
  const Json& window = json["window"];
  if (!Keys(window, "window", {"width", "height", "usable"})) return false;
  double width = 0;
  double height = 0;
  constexpr double kLargest = QAVGraphicWindow::kMaxWindowSide;
  if (!Present(window, "width", "window.width") ||
      !WindowSide(window["width"], "window.width", kLargest, width))
    return false;
  if (!Present(window, "height", "window.height") ||
      !WindowSide(window["height"], "window.height", kLargest, height))
    return false;
  double usableWidth = width;
  double usableHeight = height;
  if (window.contains("usable")) {
    const Json& usable = window["usable"];
    if (!Keys(usable, "window.usable", {"width", "height"})) return false;
    if (usable.contains("width") &&
        !WindowSide(usable["width"], "window.usable.width", kLargest, usableWidth))
      return false;
    if (usable.contains("height") &&
        !WindowSide(usable["height"], "window.usable.height", kLargest, usableHeight))
      return false;
    if (usableWidth > width || usableHeight > height)
      return Fail("window.usable", "larger than the window");
  }

  if (!json.contains("viewpoint")) return Fail("viewpoint", "missing");
  const Json& view = json["viewpoint"];
  if (!Keys(view, "viewpoint", {"eye", "target", "up", "fieldOfView"})) return false;
  double eye[3];
  double target[3];
  double up[3] = {0, 0, 1};
  double fieldOfView = 40;
  if (!Present(view, "eye", "viewpoint.eye") || !Vector(view["eye"], "viewpoint.eye", eye))
    return false;
  if (!Present(view, "target", "viewpoint.target") ||
      !Vector(view["target"], "viewpoint.target", target))
    return false;
  if (view.contains("up") && !Vector(view["up"], "viewpoint.up", up)) return false;
  if (view.contains("fieldOfView") &&
      (!Positive(view["fieldOfView"], "viewpoint.fieldOfView", fieldOfView) || fieldOfView >= 180))
    return Fail("viewpoint.fieldOfView", "degrees between 0 and 180 expected");
  const double sight[3] = {target[0] - eye[0], target[1] - eye[1], target[2] - eye[2]};
  const double across[3] = {sight[1] * up[2] - sight[2] * up[1],
                            sight[2] * up[0] - sight[0] * up[2],
                            sight[0] * up[1] - sight[1] * up[0]};
  if (std::hypot(across[0], across[1], across[2]) == 0)
    return Fail("viewpoint", "the eye, the target and the up direction do not make a view");

  std::string environment;
  std::string workbench;
  if (json.contains("environment") && !Text(json["environment"], "environment", environment))
    return false;
  if (json.contains("workbench") && !Text(json["workbench"], "workbench", workbench)) return false;

  QAVRef<QAVModelObject> product;
  if (json.contains("product")) {
    const Json& item = json["product"];
    if (!Keys(item, "product", {"name", "class", "ambiences"})) return false;
    std::string name;
    std::string className = "QAVProduct";
    if (item.contains("name") && !Text(item["name"], "product.name", name)) return false;
    if (item.contains("class") && !Text(item["class"], "product.class", className)) return false;
    QAVPrdProduct::ProductClass(className.c_str());
    product = QAVMakeRef<QAVModelObject>(className.c_str(), QAVUnicodeString(name.c_str()));
    if (item.contains("ambiences")) {
      const Json& names = item["ambiences"];
      if (!names.is_array()) return Fail("product.ambiences", "an array of names expected");
      QAVModelObject* container = product->GetContainer("QAVRamAmbienceContainer", true);
      for (std::size_t i = 0; i < names.size(); ++i) {
        std::string ambience;
        if (!Text(names[i], "product.ambiences[" + std::to_string(i) + "]", ambience)) return false;
        container->AddMember(
            QAVMakeRef<QAVModelObject>("QAVRamAmbience", QAVUnicodeString(ambience.c_str())).get());
      }
    }
  }

  if (!json.contains("root")) return Fail("root", "missing");
  QAVRef<QAV3DBagRep> root;
  _scene.product = product;
  if (!Node(json["root"], "root", 0, root)) return false;
  // The product's structure: its root occurrence is shown by the whole scene.
  const auto productInterface = QAVQuery<QAVIPrdObject>(product.get());
  if (auto* prd = dynamic_cast<QAVPrdProduct*>(productInterface.get())) {
    auto occurrence = QAVMakeRef<QAVPLMOccurrence>(nullptr, root.get());
    Occurrences(root.get(), *occurrence);
    prd->SetRootOccurrence(occurrence.get());
    _scene.rootOccurrence = occurrence;
  }
  _scene.root = root;
  _scene.width = static_cast<float>(width);
  _scene.height = static_cast<float>(height);
  _scene.usableWidth = static_cast<float>(usableWidth);
  _scene.usableHeight = static_cast<float>(usableHeight);
  _scene.eye = {eye[0], eye[1], eye[2]};
  _scene.target = {target[0], target[1], target[2]};
  _scene.up = {up[0], up[1], up[2]};
  _scene.fieldOfView = fieldOfView;
  _scene.environment = environment;
  _scene.workbench = workbench;
  _scene.product = product;
  return true;
}

bool Reader::Placement(const Json& json, const std::string& where, QAV3DBagRep& bag) {
  const bool parts =
      json.contains("translate") || json.contains("rotate") || json.contains("scale");
  if (json.contains("matrix")) {
    if (parts) return Fail(where, "\"matrix\" or translate/rotate/scale, not both");
    const Json& values = json["matrix"];
    if (!values.is_array() || values.size() != 16)
      return Fail(where + ".matrix", "16 numbers expected");
    std::array<double, 16> m{};
    for (std::size_t i = 0; i < 16; ++i)
      if (!Number(values[i], where + ".matrix[" + std::to_string(i) + "]", m[i])) return false;
    const QAV4x4Matrix matrix(m);
    if (!matrix.IsUsable() || m[12] != 0 || m[13] != 0 || m[14] != 0 || m[15] != 1)
      return Fail(where + ".matrix", "not an invertible placement (last row 0 0 0 1)");
    bag.SetMatrix(matrix);
    return true;
  }
  if (!parts) return true;
  double t[3] = {0, 0, 0};
  double s[3] = {1, 1, 1};
  if (json.contains("translate") && !Vector(json["translate"], where + ".translate", t))
    return false;
  if (json.contains("scale")) {
    const Json& scale = json["scale"];
    if (scale.is_number()) {
      if (!Positive(scale, where + ".scale", s[0])) return false;
      s[1] = s[2] = s[0];
    } else if (!Vector(scale, where + ".scale", s)) {
      return false;
    } else if (!(s[0] > 0 && s[1] > 0 && s[2] > 0)) {
      return Fail(where + ".scale", "numbers above 0 expected");
    }
  }
  double r[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  if (json.contains("rotate")) {
    const Json& rotate = json["rotate"];
    const std::string at = where + ".rotate";
    if (!Keys(rotate, at, {"axis", "degrees"})) return false;
    double axis[3];
    double degrees = 0;
    if (!Present(rotate, "axis", at + ".axis") || !Vector(rotate["axis"], at + ".axis", axis))
      return false;
    if (!Present(rotate, "degrees", at + ".degrees") ||
        !Number(rotate["degrees"], at + ".degrees", degrees))
      return false;
    const double length = std::hypot(axis[0], axis[1], axis[2]);
    if (length == 0) return Fail(at + ".axis", "a direction expected, not zero");
    const double x = axis[0] / length;
    const double y = axis[1] / length;
    const double z = axis[2] / length;
    const double a = degrees * std::numbers::pi / 180;
    const double c = std::cos(a);
    const double sn = std::sin(a);
    const double k = 1 - c;
    const double rotation[9] = {c + x * x * k,      x * y * k - z * sn, x * z * k + y * sn,
                                y * x * k + z * sn, c + y * y * k,      y * z * k - x * sn,
                                z * x * k - y * sn, z * y * k + x * sn, c + z * z * k};
    std::copy(std::begin(rotation), std::end(rotation), std::begin(r));
  }
  bag.SetMatrix(QAV4x4Matrix({r[0] * s[0], r[1] * s[1], r[2] * s[2], t[0],  //
                              r[3] * s[0], r[4] * s[1], r[5] * s[2], t[1],  //
                              r[6] * s[0], r[7] * s[1], r[8] * s[2], t[2],  //
                              0, 0, 0, 1}));
  return true;
}

bool Reader::Shape(const Json& json, const std::string& where, QAVRef<QAVSurfacicRep>& leaf,
                   std::vector<QAVRef<QAVFace>>& faces) {
  std::vector<float> p;
  std::vector<float> n;
  std::vector<std::uint32_t> t;
  auto vertex = [&p, &n](double x, double y, double z, double nx, double ny, double nz) {
    p.insert(p.end(), {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)});
    n.insert(n.end(), {static_cast<float>(nx), static_cast<float>(ny), static_cast<float>(nz)});
    return static_cast<std::uint32_t>(p.size() / 3 - 1);
  };
  if (json.contains("quad")) {
    if (!Keys(json, where, {"quad"})) return false;
    const Json& size = json["quad"];
    double w = 0;
    double h = 0;
    if (!size.is_array() || size.size() != 2) return Fail(where + ".quad", "two numbers expected");
    if (!Positive(size[0], where + ".quad[0]", w) || !Positive(size[1], where + ".quad[1]", h))
      return false;
    for (const auto& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
      vertex(x * w / 2, y * h / 2, 0, 0, 0, 1);
    t = {0, 1, 2, 0, 2, 3};
    faces.push_back(QAVMakeRef<QAVFace>(QAVMathPoint(), QAVMathVector(w / 2, 0, 0),
                                        QAVMathVector(0, h / 2, 0)));
  } else if (json.contains("box")) {
    if (!Keys(json, where, {"box"})) return false;
    double size[3];
    if (!Vector(json["box"], where + ".box", size)) return false;
    if (!(size[0] > 0 && size[1] > 0 && size[2] > 0))
      return Fail(where + ".box", "numbers above 0 expected");
    // Six faces of four vertices each, with their own normals.
    for (int axis = 0; axis < 3; ++axis) {
      for (const int side : {-1, 1}) {
        const int u = (axis + 1) % 3;
        const int v = (axis + 2) % 3;
        double corner[3];
        double normal[3] = {0, 0, 0};
        normal[axis] = side;
        double centre[3] = {0, 0, 0};
        double halfU[3] = {0, 0, 0};
        double halfV[3] = {0, 0, 0};
        centre[axis] = side * size[axis] / 2;
        halfU[u] = size[u] / 2;
        halfV[v] = size[v] / 2;
        faces.push_back(QAVMakeRef<QAVFace>(QAVMathPoint(centre[0], centre[1], centre[2]),
                                            QAVMathVector(halfU[0], halfU[1], halfU[2]),
                                            QAVMathVector(halfV[0], halfV[1], halfV[2])));
        std::uint32_t first = 0;
        for (int k = 0; k < 4; ++k) {
          const int su = (k == 1 || k == 2) ? 1 : -1;
          const int sv = (k >= 2) ? 1 : -1;
          corner[axis] = side * size[axis] / 2;
          corner[u] = su * size[u] / 2;
          corner[v] = sv * size[v] / 2;
          const std::uint32_t index =
              vertex(corner[0], corner[1], corner[2], normal[0], normal[1], normal[2]);
          if (k == 0) first = index;
        }
        // Counter-clockwise seen from outside.
        if (side > 0)
          t.insert(t.end(), {first, first + 1, first + 2, first, first + 2, first + 3});
        else
          t.insert(t.end(), {first, first + 2, first + 1, first, first + 3, first + 2});
      }
    }
  } else if (json.contains("sphere")) {
    if (!Keys(json, where, {"sphere", "segments"})) return false;
    double radius = 0;
    if (!Positive(json["sphere"], where + ".sphere", radius)) return false;
    int segments = 24;
    if (json.contains("segments")) {
      const Json& count = json["segments"];
      if (!count.is_number_integer() || count.get<long long>() < 3 || count.get<long long>() > 512)
        return Fail(where + ".segments", "a whole number from 3 to 512 expected");
      segments = count.get<int>();
    }
    const int rings = segments / 2 + 1;
    for (int i = 0; i <= rings; ++i) {
      const double theta = std::numbers::pi * i / rings;
      for (int j = 0; j <= segments; ++j) {
        const double phi = 2 * std::numbers::pi * j / segments;
        const double x = std::sin(theta) * std::cos(phi);
        const double y = std::sin(theta) * std::sin(phi);
        const double z = std::cos(theta);
        vertex(radius * x, radius * y, radius * z, x, y, z);
      }
    }
    const auto row = static_cast<std::uint32_t>(segments + 1);
    for (std::uint32_t i = 0; i < static_cast<std::uint32_t>(rings); ++i) {
      for (std::uint32_t j = 0; j < static_cast<std::uint32_t>(segments); ++j) {
        const std::uint32_t a = i * row + j;
        const std::uint32_t b = a + row;
        t.insert(t.end(), {a, b, a + 1, a + 1, b, b + 1});
      }
    }
  } else {
    return Fail(where, "\"quad\", \"box\" or \"sphere\" expected");
  }
  leaf = QAVMakeRef<QAVSurfacicRep>();
  if (!leaf->SetGeometry(std::move(p), std::move(n), std::move(t)))
    return Fail(where, "not a valid shape");
  // A box's faces are two triangles each: a pick tells which face it hit, by
  // its index in the face list.
  if (faces.size() > 1) {
    std::vector<int> firsts;
    for (std::size_t i = 0; i < faces.size(); ++i)
      firsts.push_back(static_cast<int>(2 * i));
    leaf->SetFaces(firsts);
  }
  return true;
}

bool Reader::Node(const Json& json, const std::string& where, int depth, QAVRef<QAV3DBagRep>& bag) {
  if (depth > kMaxDepth) return Fail(where, "nested too deep");
  if (!Keys(json, where,
            {"class", "name", "matrix", "translate", "rotate", "scale", "mesh", "shape", "plm",
             "children"}))
    return false;
  bag = QAVMakeRef<QAV3DBagRep>();
  std::string className;
  std::string name;
  if (json.contains("class") && !Text(json["class"], where + ".class", className)) return false;
  if (json.contains("name") && !Text(json["name"], where + ".name", name)) return false;
  if (!className.empty() || !name.empty()) {
    if (className.empty()) return Fail(where, "a \"name\" without a \"class\"");
    bag->SetModelObject(
        QAVMakeRef<QAVModelObject>(className.c_str(), QAVUnicodeString(name.c_str())).get());
  }
  if (!Placement(json, where, *bag)) return false;
  _spaces.push_back({where, bag->GetMatrix() ? *bag->GetMatrix() : QAV4x4Matrix()});
  if (json.contains("mesh") && json.contains("shape"))
    return Fail(where, "\"mesh\" or \"shape\", not both");
  if (json.contains("plm")) {
    if (!Structure(json, where, *bag)) return false;
  } else if (bag->GetModelObject()) {
    bag->PublishAsVisu();  // the object is shown by its node
  }
  QAVRef<QAVSurfacicRep> leaf;
  std::vector<QAVRef<QAVFace>> faces;
  if (json.contains("mesh")) {
    std::string file;
    if (!Text(json["mesh"], where + ".mesh", file)) return false;
    if (file.empty()) return Fail(where + ".mesh", "a file name expected");
    const std::filesystem::path path = std::filesystem::path(_directory) / file;
    std::string why;
    if (FAILED(QAVMeshReader::Read(path.string(), leaf, why))) return Fail(where + ".mesh", why);
  } else if (json.contains("shape")) {
    if (!Shape(json["shape"], where + ".shape", leaf, faces)) return false;
    const auto faceList = QAVQuery<QAVIFaceList>(bag->GetModelObject());
    if (auto* list = dynamic_cast<QAVFaceList*>(faceList.get()))
      for (const auto& face : faces)
        list->AddFace(face.get());
  }
  if (leaf) {
    if (!Fits(*leaf, where + (json.contains("mesh") ? ".mesh" : ".shape"))) return false;
    bag->AddChild(leaf.get());
    ++_scene.leafCount;
    _scene.triangleCount += leaf->GetTriangleCount();
  }
  if (json.contains("children")) {
    const Json& children = json["children"];
    if (!children.is_array()) return Fail(where + ".children", "an array expected");
    for (std::size_t i = 0; i < children.size(); ++i) {
      QAVRef<QAV3DBagRep> child;
      if (!Node(children[i], where + ".children[" + std::to_string(i) + "]", depth + 1, child))
        return false;
      bag->AddChild(child.get());
    }
  }
  _spaces.pop_back();
  return true;
}

bool Reader::Fits(const QAV3DTessellatedRep& leaf, const std::string& where) {
  // The box of the leaf's vertices, then its eight corners placed by each
  // node's matrix in turn: in every space, from the node's own up to the
  // scene's, every vertex lies within the corners' extremes.
  const std::vector<float>& p = leaf.GetPositions();
  if (p.empty()) return true;
  double low[3] = {p[0], p[1], p[2]};
  double high[3] = {p[0], p[1], p[2]};
  for (std::size_t i = 0; i + 2 < p.size(); i += 3) {
    for (std::size_t k = 0; k < 3; ++k) {
      low[k] = std::min<double>(low[k], p[i + k]);
      high[k] = std::max<double>(high[k], p[i + k]);
    }
  }
  std::array<QAVMathPoint, 8> corners;
  for (std::size_t c = 0; c < 8; ++c)
    corners[c] = {(c & 1U) ? high[0] : low[0], (c & 2U) ? high[1] : low[1],
                  (c & 4U) ? high[2] : low[2]};
  // The placements from the leaf's node up to the current level, composed as
  // a box of an object above them composes them.
  QAV4x4Matrix placed;
  for (std::size_t level = _spaces.size() + 1; level-- > 0;) {
    // At `level`, the corners are in the space of the node _spaces[level - 1]
    // (of the scene at level 0), inside all the placements below it.
    if (level < _spaces.size()) {
      placed = _spaces[level].matrix * placed;
      for (const double value : placed.RowMajor())
        if (std::abs(value) > kMaxNumber)
          return Fail(where, "the placements from " + _spaces[level].where + " down make " +
                                 Shown(value) + ", beyond single precision (at most " +
                                 Shown(kMaxNumber) + " either way)");
      for (QAVMathPoint& corner : corners)
        corner = _spaces[level].matrix * corner;
    }
    for (const QAVMathPoint& corner : corners) {
      for (const double value : {corner.x, corner.y, corner.z}) {
        if (std::abs(value) <= kMaxCoordinate) continue;
        return Fail(where, "the box of its vertices reaches " + Shown(value) + " in the space of " +
                               (level > 0 ? _spaces[level - 1].where : std::string("the scene")) +
                               ", beyond " + Shown(kMaxCoordinate) +
                               " either way (half the single-precision range, so that sizes fit)");
      }
    }
  }
  return true;
}

bool Reader::Structure(const Json& json, const std::string& where, QAV3DBagRep& bag) {
  std::string kind;
  if (!Text(json["plm"], where + ".plm", kind)) return false;
  if (kind != "instance" && kind != "rep")
    return Fail(where + ".plm", "\"instance\" or \"rep\" expected");
  if (!bag.GetModelObject()) return Fail(where + ".plm", "a node with a \"class\" expected");
  if (!_scene.product) return Fail(where + ".plm", "a scene with a \"product\" expected");
  if (kind == "instance")
    _scene.components[&bag] = QAVMakeRef<QAVPLMInstance>(bag.GetModelObject());
  else
    _scene.components[&bag] = QAVMakeRef<QAVPLMRepInstance>(bag.GetModelObject());
  return true;
}

void Reader::Occurrences(QAV3DRep* rep, QAVPLMOccurrence& current) const {
  auto* bag = dynamic_cast<QAV3DBagRep*>(rep);
  if (!bag) return;
  for (int i = 0; i < bag->GetChildCount(); ++i) {
    QAV3DRep* child = bag->GetChild(i);
    const auto found = _scene.components.find(child);
    QAVIPLMComponent* component = found == _scene.components.end() ? nullptr : found->second.get();
    if (auto* instance = dynamic_cast<QAVIPLMNavInstance*>(component)) {
      auto occurrence = QAVMakeRef<QAVPLMOccurrence>(instance, child);
      current.AddChild(occurrence.get());
      Occurrences(child, *occurrence);
      continue;
    }
    if (auto* instance = dynamic_cast<QAVIPLMNavRepInstance*>(component))
      current.AddRepOccurrence(QAVMakeRef<QAVPLMRepOccurrence>(instance, child).get());
    Occurrences(child, current);
  }
}

}  // namespace

HRESULT QAVSceneReader::Parse(std::string_view text, const std::string& directory,
                              QAVSceneDocument& scene, std::string& error) {
  const Json json = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) {
    error = "not valid JSON";
    return E_FAIL;
  }
  QAVSceneDocument read;
  Reader reader(directory, read);
  if (!reader.Document(json)) {
    error = reader.Error();
    return E_FAIL;
  }
  scene = std::move(read);
  return S_OK;
}

HRESULT QAVSceneReader::Read(const std::string& path, QAVSceneDocument& scene, std::string& error) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    error = path + (std::filesystem::exists(path, ec) ? ": not a regular file" : ": no such file");
    return E_FAIL;
  }
  if (std::filesystem::file_size(path, ec) > kMaxFileBytes) {
    error = path + ": larger than a scene file can be";
    return E_FAIL;
  }
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  if (!in) {
    error = path + ": cannot be read";
    return E_FAIL;
  }
  std::string why;
  const std::string directory = std::filesystem::path(path).parent_path().string();
  if (FAILED(Parse(text.str(), directory.empty() ? "." : directory, scene, why))) {
    error = path + ": " + why;
    return E_FAIL;
  }
  return S_OK;
}
