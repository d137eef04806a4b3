// What the bar and place commands share: the names of bars and mapping types
// on the command line.
#ifndef QAVCliBar_h
#define QAVCliBar_h

#include <string>

namespace qavcli {

// "material", "sticker", "uv", "cropmode" to the bar's late type; empty for
// another name.
std::string BarLateType(const std::string& kind);
// "planar", "spherical", "finite-cylindrical", "infinite-cylindrical",
// "cubical", "uv" to the model's mapping type, "none" to -1; false for another
// name.
bool ParseMappingType(const std::string& name, int& type);
// The name of a mapping type ("unknown" for a value that is none).
std::string MappingTypeName(int type);
// The names accepted, for messages.
const char* MappingTypeNames();

}  // namespace qavcli

#endif
