// The picture of the content importer's panel as the user sees it, drawn from
// its widgets and the style sheet of its style classes.
#ifndef QAVCliImportPanel_h
#define QAVCliImportPanel_h

#include <string>
#include <vector>

#include "QAVRbaMaterialCatalogImporterPanel.h"

namespace qavcli {

// The SVG of the panel in its dialog: the window title, the kind's icon, the
// panel's title and information, the tiles (thumbnail, title, description;
// an unavailable one faded), the do-not-show-again check box and the
// buttons. Images named without a folder are looked for in `imageDirs`; one
// that is not found is drawn as an empty frame.
std::string ImporterPanelSvg(const QAVRbaMaterialCatalogImporterPanel& panel,
                             const std::vector<std::string>& imageDirs);

}  // namespace qavcli

#endif
