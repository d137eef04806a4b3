// The command behind the four create-new-content entries: a new covering
// material, ambience, human or accessory (props). It opens the importer panel
// of the kind's presets (panel 26 of the panel manager, once per 3D window),
// lets the user pick one, confirms, and imports the preset's packaged content
// file into the PLM repository as a reference, as a progress task; then it
// tells the user whether the import worked, and ends.
//
// Every user text is looked up in the message catalog
// "QAVRbaMaterialCatalogImporterCmd" by key, with a fixed text when the key has
// none. A preset n of a kind is described by the keys <prefix>n"_Name",
// "_Icon", "_File", "_Description" and "_Type" (prefixes "Preset_Mat_",
// "Preset_Amb_", "Preset_Hum_", "Preset_Pro_"); the number of presets is in
// "NbMaterialPresets", "NbAmbiencePresets", "NbHumanPresets" or
// "NbPropsPresets". Preset 0 is the sample, always listed first.
//
// The content files are found under the content installation path R (setting
// "QAVContentInstallPath" of "ContentInstallPathRepo"): the newest of
// R/startup/<folder>/<base>_V0<v>.<ext>, v = 9 down to 0, where the folder is
// the kind's ("materials", "ambiences", "humans", "props"); the material
// sample "Sample_Materials.orlix" comes from the start-up path
// ("QAVStartupPath") instead.
#ifndef QAVRbaMaterialCatalogImporterCmd_h
#define QAVRbaMaterialCatalogImporterCmd_h

#include <cstdint>

#include "QAVCommand.h"
#include "QAVDlgWidget.h"
#include "QAVFrmWindow.h"
#include "QAVIProgressTask.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVSettingRepository.h"
#include "QAVUnicodeString.h"
#include "QAVVidFraMessageBox.h"

class QAVRBAUI_API QAVRbaMaterialCatalogImporterCmd : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  // The panel's id in the panel manager.
  static constexpr int kPanelId = 26;

  // A command for a kind ("Material", "Ambience", "Human" or "Props"); an
  // empty kind is taken from the first argument of the header that starts it.
  // It sends itself its activation: the panel is built at the host's next
  // loop pass.
  explicit QAVRbaMaterialCatalogImporterCmd(const QAVUnicodeString& kind = QAVUnicodeString());
  QAVRbaMaterialCatalogImporterCmd(const QAVRbaMaterialCatalogImporterCmd&) = delete;
  QAVRbaMaterialCatalogImporterCmd& operator=(const QAVRbaMaterialCatalogImporterCmd&) = delete;
  ~QAVRbaMaterialCatalogImporterCmd() override;

  // The activation: builds and shows the panel, unless an importer panel is
  // already open in the window (the command then ends and returns 1).
  int AnalyseNotification(QAVCommand* from, QAVNotification* notification) override;
  // Answers QAVIProgressTask: the import, run by the task controller.
  HRESULT QueryInterface(const IID& iid, void** object) override;

  // The content file of preset file `fileName` of `kind` under the content
  // installation path `installPath`; empty when there is none.
  static QAVUnicodeString FindContentFile(const QAVUnicodeString& kind,
                                          const QAVUnicodeString& installPath,
                                          const QAVUnicodeString& fileName);

  // What the command holds, for the program and tests.
  const QAVUnicodeString& GetKind() const { return _kind; }
  QAVRbaMaterialCatalogImporterPanel* GetPanel() const { return _panel.get(); }
  QAVVidFraMessageBox* GetConfirmationBox() const { return _confirmationBox.get(); }
  const QAVUnicodeString& GetContentFile() const { return _contentFile; }
  const QAVUnicodeString& GetContentInstallPath() const { return _installPath; }
  // The tiles whose content file was found, the sample included.
  int GetItemCount() const { return _itemCount; }
  // The import's result: S_FALSE before any, then S_OK or E_FAIL.
  HRESULT GetImportResult() const { return _importResult; }

 private:
  class TaskTie : public QAVIProgressTask {
   public:
    explicit TaskTie(QAVRbaMaterialCatalogImporterCmd& command) : _command(command) {}
    HRESULT PerformTask(QAVIProgressTaskUI* ui, void* data) override {
      return _command.PerformTask(ui, data);
    }

   private:
    QAVRbaMaterialCatalogImporterCmd& _command;
  };

  int BuildPanel();
  HRESULT FillPanel();
  void ShowContentWarning(const char* key, const char* text);
  void OnSelectItem(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnCancel(QAVCommand* sender, QAVNotification* notification, void* data);
  void OnAccept(QAVCommand* sender, QAVNotification* notification, void* data);
  void Confirm(const QAVUnicodeString& fileName);
  HRESULT PerformTask(QAVIProgressTaskUI* ui, void* data);
  void ShowFurtive(const QAVUnicodeString& text) const;
  void ClosePanel();
  void End();

  QAVRef<QAVRbaMaterialCatalogImporterPanel> _panel;
  QAVRef<QAVVidFraMessageBox> _confirmationBox;  // shared with the host
  QAVRef<QAVDialog> _dialog;                     // "ImportDialogBox", shared with the host
  QAVRef<QAVFrmWindow> _window;
  QAVSettingRepository* _settings = nullptr;  // the host's
  QAVUnicodeString _kind;
  QAVUnicodeString _selectedTitle;
  QAVUnicodeString _contentFile;
  QAVUnicodeString _installPath;
  QAVIProgressTaskUI* _progress = nullptr;  // while the task runs
  int _itemCount = 0;
  HRESULT _importResult = S_FALSE;
  bool _registered = false;  // this command's panel is the one registered
  bool _ended = false;
  std::uint64_t _settingsCallback = 0;
  TaskTie _task{*this};
};

// The factory registered under "QAVRbaMaterialCatalogImporterCmd": a command
// whose kind is its header's first argument.
QAVRBAUI_API QAVCommand* fctCreateQAVRbaMaterialCatalogImporterCmd();

#endif
