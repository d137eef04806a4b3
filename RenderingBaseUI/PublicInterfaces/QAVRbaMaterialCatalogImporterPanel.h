// The content importer panel: the preset tiles the user picks from, the
// panel's icon, title and information texts, a do-not-show-again check box and
// the Create and Cancel buttons. Its state is published as properties for the
// style sheet ("QAVRbaMaterialCatalogImporterPanel.QAVSYPStyle"); its property
// accessors and meta-class builder are generated from its widget description.
//
// It tells its father command through its callback manager: SELECT_ITEM()
// when Create is pressed or a tile double-clicked (the father then reads
// GetSelectedIndex, -1 for none), CANCEL() when Cancel is pressed.
//
// Selection: a click clears the selection, then selects the clicked tile
// unless it is unavailable; so a click on the selected tile keeps it
// selected and a click on an unavailable one leaves none. Hovering highlights
// a tile that is not the selected one; leaving clears its highlight. Create
// is sensitive while a tile is selected.
#ifndef QAVRbaMaterialCatalogImporterPanel_h
#define QAVRbaMaterialCatalogImporterPanel_h

#include "QAVISYPCollection.h"
#include "QAVNotification.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVSYPMetaClass.h"
#include "QAVSYPWidget.h"
#include "QAVUnicodeString.h"

class QAVRbaMaterialCatalogImporterItem;

class QAVRBAUI_API QAVRbaMaterialCatalogImporterPanelSelectItemNotification
    : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  QAVRbaMaterialCatalogImporterPanelSelectItemNotification();
  ~QAVRbaMaterialCatalogImporterPanelSelectItemNotification() override;
};

class QAVRBAUI_API QAVRbaMaterialCatalogImporterPanelCancelNotification : public QAVNotification {
  QAV_DECLARE_CLASS
 public:
  QAVRbaMaterialCatalogImporterPanelCancelNotification();
  ~QAVRbaMaterialCatalogImporterPanelCancelNotification() override;
};

class QAVRBAUI_API QAVRbaMaterialCatalogImporterPanel : public QAVSYPWidget {
  QAV_DECLARE_CLASS
 public:
  static const char* SELECT_ITEM() {
    return "QAVRbaMaterialCatalogImporterPanelSelectItemNotification";
  }
  static const char* CANCEL() { return "QAVRbaMaterialCatalogImporterPanelCancelNotification"; }

  // A panel in `father` (the importer's dialog box), which holds it, with its
  // child widgets ("PanelIcon", the item container "ItemContainer",
  // "CheckDoNoSHowAgain", "CreateButton", "CancelButton"). The check box shows
  // not "MaterialsorlixImporterPopUp" of "RenderingLiveSettings" (checked when
  // the setting is absent).
  QAVRbaMaterialCatalogImporterPanel(QAVDlgWidget* father, const char* name);
  ~QAVRbaMaterialCatalogImporterPanel() override;

  // The tiles, in the order added.
  QAVISYPCollection* GetItems() const;
  // The state of the check box.
  void SetDoNotShowAgainCheck(int value);
  int GetDoNotShowAgainCheck() const;
  void SetTitle(const QAVUnicodeString& value);
  QAVUnicodeString GetTitle() const;
  void SetInfo(const QAVUnicodeString& value);
  QAVUnicodeString GetInfo() const;

  // Adds a tile made in the item container (null is ignored): the panel
  // follows its clicks, double clicks and hovering, and stacks it below the
  // others.
  void AddItem(QAVRbaMaterialCatalogImporterItem* item);
  // The kind's icon on "PanelIcon"; Create becomes insensitive.
  void SetPanelIcon(const char* imageName);
  // The widget that holds the tiles (borrowed), or null.
  QAVDlgWidget* GetItemContainer() const { return _container; }
  // The position of the selected tile in the container, or -1.
  int GetSelectedIndex() const { return _selectedIndex; }

 private:
  void OnClick(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnDoubleClick(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnPointerEnter(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnPointerLeave(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnButton(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnCheck(QAVCommand* sender, QAVNotification* notification, void* data);
  void Select(QAVCommand* sender);
  void SendSelectItem();
  QAVRbaMaterialCatalogImporterItem* ItemAt(int index) const;

  QAVDlgWidget* _container = nullptr;  // a child: held by this panel
  QAVDlgWidget* _icon = nullptr;
  QAVDlgWidget* _check = nullptr;
  QAVDlgWidget* _create = nullptr;
  int _selectedIndex = -1;
  QAVRef<QAVRbaMaterialCatalogImporterPanelSelectItemNotification> _selectItem;
  QAVRef<QAVRbaMaterialCatalogImporterPanelCancelNotification> _cancel;
};

QAVRBAUI_API QAVSYPMetaClassBuilder*
fctCreateQAVRbaMaterialCatalogImporterPanelSYPMetaClassBuilder();

#endif
