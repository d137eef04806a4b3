// Small scenes built in code for the tests that pick or draw.
#ifndef QAVTestScenes_h
#define QAVTestScenes_h

#include <string>
#include <vector>

#include "QAV3DRep.h"
#include "QAVRef.h"

namespace qavtest {

// A square of side 2 * half in the plane z = 0, facing +z, standing for an
// object of the class given (none when null).
QAVRef<QAVSurfacicRep> Square(double half, const char* className);
// A bag moving its child by (dx, dy, dz), standing for an object of the class
// given (none when null).
QAVRef<QAV3DBagRep> Moved(QAV3DRep* child, double dx, double dy, double dz, const char* className);

// Decodes a PNG file's bytes to 8-bit RGB pixels, row after row from the top:
// false when they are not a PNG.
bool DecodePng(const std::string& bytes, int& width, int& height, std::vector<unsigned char>& rgb);

}  // namespace qavtest

#endif
