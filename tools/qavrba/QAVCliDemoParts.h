// Pieces of the demo tour that live beside their command groups. Each takes the
// shipped resources directory, prints its part of the tour on standard output and
// returns 0, or prints the reason on standard error and returns 1.
#ifndef QAVCliDemoParts_h
#define QAVCliDemoParts_h

#include <string>

// Reads the sample light profile of resources/ies and prints a few samples.
int DemoIes(const std::string& resourcesDir);

// Prints the black-body tints of a few temperatures.
int DemoBlackbody();
// Converts a few grey levels from a linear working profile (made for the demo
// in a temporary folder) to the sRGB screen through the library's colour
// management, and prints them.
int DemoColor(const std::string& resourcesDir);

// Opens the showroom scene: the exposure correction of a few apertures, what
// lies at the centre of the view, the autofocus distance, the focus circle and
// the live HUD's lines.
int DemoScene(const std::string& resourcesDir);
// Places a material on the showroom's vase through its context bar, snaps a
// frame to the sticker, and reads a length ruler back.
int DemoPlacement(const std::string& resourcesDir);
// The material tiles of the shipped content, then the import of one preset
// with its progress, and what the repository holds afterwards.
int DemoImport(const std::string& resourcesDir);
// Whether a few shader types are supported by the live renderer.
int DemoShaders();
// The panel scenario over the scene shown by `driver` (see QAVCliDemoPanels.cpp).
class QAVHostDriver;
void DemoPanels(QAVHostDriver& driver);

#endif
