// A tile of the content importer panel: a preset's title, description and
// picture, a button-like widget whose state is published as properties for the
// style sheet ("QAVRbaMaterialCatalogImporterPanel.QAVSYPStyle"). Its property
// accessors and meta-class builder are generated from its widget description.
#ifndef QAVRbaMaterialCatalogImporterItem_h
#define QAVRbaMaterialCatalogImporterItem_h

#include "QAVRbaUIExport.h"
#include "QAVSYPMetaClass.h"
#include "QAVSYPWidget.h"
#include "QAVUnicodeString.h"

class QAVRBAUI_API QAVRbaMaterialCatalogImporterItem : public QAVSYPWidget {
  QAV_DECLARE_CLASS
 public:
  // A tile in `father` (the panel's item container), which holds it.
  QAVRbaMaterialCatalogImporterItem(QAVDlgWidget* father, const char* name);
  ~QAVRbaMaterialCatalogImporterItem() override;

  // 1 while the tile is the selected one.
  void SetBSelect(int value);
  int GetBSelect() const;
  // 1 while the pointer is over the tile and it is not the selected one.
  void SetBHighlight(int value);
  int GetBHighlight() const;
  void SetTitle(const QAVUnicodeString& value);
  QAVUnicodeString GetTitle() const;
  void SetDescription(const QAVUnicodeString& value);
  QAVUnicodeString GetDescription() const;
  // The image file shown on the tile.
  void SetPicture(const QAVUnicodeString& value);
  QAVUnicodeString GetPicture() const;

  // 1 when the preset's content file was not found: the tile is shown but can
  // never be selected.
  void SetUnavailable(unsigned char flag) { _unavailable = flag; }
  unsigned char GetUnavailable() const { return _unavailable; }

 private:
  unsigned char _unavailable = 0;
};

QAVRBAUI_API QAVSYPMetaClassBuilder*
fctCreateQAVRbaMaterialCatalogImporterItemSYPMetaClassBuilder();

#endif
