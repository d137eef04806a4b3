#include "QAVRbaMaterialCatalogImporterCmd.h"

#include <cstdlib>
#include <string>

#include "QAVAfrArguments.h"
#include "QAVApplicationFrame.h"
#include "QAVBoxingOfQAVUnicodeString.h"
#include "QAVCallbackManager.h"
#include "QAVDlgNotify.h"
#include "QAVDlgWidget.h"
#include "QAVFileServices.h"
#include "QAVFillDictionary.h"
#include "QAVFrmLayout.h"
#include "QAVMsgCatalog.h"
#include "QAVNotificationDialog.h"
#include "QAVPLMBriefcaseProtectedServices.h"
#include "QAVPLMComponentServices.h"
#include "QAVPLMConnectionService.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVRbaMaterialCatalogImporterPanel.h"
#include "QAVRbaPanelManager.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVTaskController.h"
#include "QAVVidFraMessageBox.h"

QAV_IMPLEMENT_CLASS(QAVRbaMaterialCatalogImporterCmd, QAVCommand, "RenderingBaseUI");

namespace {

constexpr const char* kCatalog = "QAVRbaMaterialCatalogImporterCmd";
constexpr const char* kStyleSheet = "QAVRbaMaterialCatalogImporterPanel.QAVSYPStyle";
constexpr const char* kItemStyle = "QAVRbaMaterialCatalogImporterItem";
constexpr const char* kSampleMaterials = "Sample_Materials.orlix";

// What each kind of content selects.
struct Kind {
  const char* name;
  const char* prefix;
  const char* countKey;
  const char* folder;
  const char* presetType;
  const char* thumbnail;
  // The default picture of a tile whose icon is not given and whose content
  // is missing: the kind's thumbnail, except that the human one is misspelt
  // there, as the shipped resources name it.
  const char* missingThumbnail;
  const char* okKey;
  const char* koKey;
  const char* icon;  // the panel's: props show the material one
  const char* windowTitleKey;
  const char* windowTitle;
  const char* panelTitleKey;
  const char* panelTitle;
  const char* infoKey;
  const char* info;
};

constexpr Kind kKinds[] = {
    {"Material", "Preset_Mat_", "NbMaterialPresets", "materials", "MPM_material",
     "QAVRbaMaterialLibrary_Default_Thumbnail.png", "QAVRbaMaterialLibrary_Default_Thumbnail.png",
     "Import1OKWarning", "Import1KOWarning", "QAVRbaImportMatCatalog", "WindowTitle1",
     "Create a new covering material", "PanelTitle1",
     "You are about to create a new covering material. Choose a preset or create an advanced "
     "material below.",
     "PanelInfo1",
     "After you import a new material, it will not be visible in the ZENTROPA platform. You will "
     "have to query it to use it."},
    {"Ambience", "Preset_Amb_", "NbAmbiencePresets", "ambiences", "MPM_ambience",
     "QAVRbaAmbience_Default_Thumbnail.png", "QAVRbaAmbience_Default_Thumbnail.png",
     "Import2OKWarning", "Import2KOWarning", "QAVRbaImportAmbience", "WindowTitle2",
     "Create a new ambience", "PanelTitle2", "You are about to create a new ambience.",
     "PanelInfo2",
     "After you import a new ambience, it will not be visible in the ZENTROPA platform. You will "
     "have to query it to use it."},
    {"Human", "Preset_Hum_", "NbHumanPresets", "humans", "MPM_human",
     "QAVRbaHuman_Default_Thumbnail.png", "QAVRbaHuman_Default_Tumbnail.png", "Import3OKWarning",
     "Import3KOWarning", "QAVRbaImportHuman", "WindowTitle3", "Create a new human", "PanelTitle3",
     "You are about to create a new human.", "PanelInfo3",
     "After you import a new human, it will not be visible in the ZENTROPA platform. You will "
     "have to query it to use it."},
    {"Props", "Preset_Pro_", "NbPropsPresets", "props", "MPM_props",
     "QAVRbaMaterialLibrary_Default_Thumbnail.png", "QAVRbaMaterialLibrary_Default_Thumbnail.png",
     "Import4OKWarning", "Import4KOWarning", "QAVRbaImportMatCatalog", "WindowTitle4",
     "Create a new accessory", "PanelTitle4", "You are about to create a new accessory.",
     "PanelInfo4",
     "After you import a new props model, it will not be visible in the ZENTROPA platform. You "
     "will have to query it to use it."},
};

const Kind* FindKind(const QAVUnicodeString& name) {
  for (const Kind& kind : kKinds)
    if (name.ToString() == kind.name) return &kind;
  return nullptr;
}

QAVUnicodeString Text(const std::string& key, const char* defaultText) {
  return QAVMsgCatalog::BuildMessage(kCatalog, QAVString(key), nullptr, 0,
                                     QAVUnicodeString(defaultText));
}

// The raw text of a key, empty when there is none.
QAVUnicodeString Raw(const std::string& key) {
  QAVUnicodeString text;
  QAVMsgCatalog::GetText(kCatalog, QAVString(key), text);
  return text;
}

std::string PresetKey(const Kind& kind, int n, const char* field) {
  return kind.prefix + std::to_string(n) + field;
}

bool Readable(const QAVUnicodeString& path) {
  return _QAVFileAccess(path, QAV_ACCESS_READ, 0) == 0;
}

// "Lamp.png" with "_teaser" -> "Lamp_teaser.png"; a name without a dot ends
// with the dot.
QAVUnicodeString WithSuffix(const QAVUnicodeString& fileName, const std::string& suffix) {
  const std::string name = fileName.ToString().str();
  const auto dot = name.rfind('.');
  const std::string base = dot == std::string::npos ? name : name.substr(0, dot);
  const std::string extension = dot == std::string::npos ? "" : name.substr(dot + 1);
  return QAVUnicodeString((base + suffix + "." + extension).c_str());
}

QAVCommand* Create() { return new QAVRbaMaterialCatalogImporterCmd; }
[[maybe_unused]] const bool registered =
    QAVFillDictionary::Register("QAVRbaMaterialCatalogImporterCmd", &Create);

}  // namespace

QAVCommand* fctCreateQAVRbaMaterialCatalogImporterCmd() { return Create(); }

QAVRbaMaterialCatalogImporterCmd::QAVRbaMaterialCatalogImporterCmd(const QAVUnicodeString& kind)
    : QAVCommand(nullptr, "QAVRbaMaterialCatalogImporterCmd", 3), _kind(kind) {
  _task.AggregateInto(this);
  if (_kind.IsEmpty())
    if (QAVAfrArguments* arguments = QAVAfrGetArguments())
      QAVBoxingOfQAVUnicodeString::Unbox(arguments->GetArgument(0), _kind);
  SendNotification(this, QAVMakeRef<QAVNotification>().get());
  if (QAVFrmLayout* layout = QAVFrmLayout::GetCurrentLayout())
    _window = QAVRef<QAVFrmWindow>(layout->GetCurrentWindow());
  namespace Schema = QAVRbaRenderingSettings;
  _settings = Schema::Open(Schema::kContentInstallPathKey);
  if (_settings) {
    _settingsCallback = _settings->GetCallbackManager()->AddCallback(
        QAVSettingRepository::ModifiedEvent(),
        [this](const char*, void*, QAVNotification*, void*, QAVCallback) {
          Schema::Read(*_settings, Schema::kContentInstallPathKey, _installPath);
          if (_panel) BuildPanel();
        });
    Schema::Read(*_settings, Schema::kContentInstallPathKey, _installPath);
  }
}

QAVRbaMaterialCatalogImporterCmd::~QAVRbaMaterialCatalogImporterCmd() {
  if (_settings && _settingsCallback)
    _settings->GetCallbackManager()->RemoveCallback(_settingsCallback);
  _task.AggregateInto(nullptr);
}

HRESULT QAVRbaMaterialCatalogImporterCmd::QueryInterface(const IID& iid, void** object) {
  if (object && iid == QAVIProgressTask::ClassId()) {
    AddRef();
    *object = static_cast<QAVBaseUnknown*>(&_task);
    return S_OK;
  }
  return QAVCommand::QueryInterface(iid, object);
}

int QAVRbaMaterialCatalogImporterCmd::AnalyseNotification(QAVCommand* from, QAVNotification*) {
  if (from != this || _panel || _ended) return 0;
  return BuildPanel();
}

int QAVRbaMaterialCatalogImporterCmd::BuildPanel() {
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  if (!_panel && manager && manager->IsPanelOpen(kPanelId, _window.get())) {
    _ended = true;
    RequestDelayedDestruction();
    return 1;
  }
  const Kind* kind = FindKind(_kind);
  ClosePanel();
  // The dialog and its panel are the host's; this command shares them.
  _dialog = QAVRef<QAVDialog>(new QAVDialog("ImportDialogBox"));
  _dialog->SetVisibility(false);
  _panel = QAVRef<QAVRbaMaterialCatalogImporterPanel>(
      new QAVRbaMaterialCatalogImporterPanel(_dialog.get(), "QAVRbaMaterialCatalogImporterPanel"));
  AddAnalyseNotificationCB(_panel.get(), QAVRbaMaterialCatalogImporterPanel::SELECT_ITEM(),
                           &QAVRbaMaterialCatalogImporterCmd::OnSelectItem, nullptr);
  AddAnalyseNotificationCB(_panel.get(), QAVRbaMaterialCatalogImporterPanel::CANCEL(),
                           &QAVRbaMaterialCatalogImporterCmd::OnCancel, nullptr);
  AddAnalyseNotificationCB(_dialog.get(), QAVDialog::WINDOW_CLOSE(),
                           &QAVRbaMaterialCatalogImporterCmd::OnCancel, nullptr);
  if (kind) {
    _dialog->SetTitle(Text(kind->windowTitleKey, kind->windowTitle));
    _panel->SetTitle(Text(kind->panelTitleKey, kind->panelTitle));
    _panel->SetInfo(Text(kind->infoKey, kind->info));
    _panel->SetPanelIcon((std::string(kind->icon) + ".png").c_str());
  }
  FillPanel();
  _dialog->SetVisibility(true);
  if (manager && !_registered) {
    manager->AddPanel(kPanelId, this, _window.get());
    _registered = true;
  }
  return 0;
}

HRESULT QAVRbaMaterialCatalogImporterCmd::FillPanel() {
  const Kind* kind = FindKind(_kind);
  if (!_panel || !kind) return E_FAIL;
  _itemCount = 0;
  const int count =
      static_cast<int>(std::strtol(Raw(kind->countKey).ToString().c_str(), nullptr, 10));

  // The sample, always first, from the start-up path.
  const auto item = [this](int n) {
    auto* tile = new QAVRbaMaterialCatalogImporterItem(_panel->GetItemContainer(),
                                                       ("Preset" + std::to_string(n)).c_str());
    tile->SetStyleClass(kItemStyle, kStyleSheet);
    return tile;
  };
  const auto icon = [kind](int n) {
    QAVUnicodeString name = Raw(PresetKey(*kind, n, "_Icon"));
    return name.IsEmpty() ? QAVUnicodeString(kind->thumbnail) : name;
  };
  QAVRbaMaterialCatalogImporterItem* sample = item(0);
  sample->SetTitle(Text(PresetKey(*kind, 0, "_Name"), "Preset Name"));
  // Its content file is looked up along the start-up path; the tile shows
  // nothing of it.
  QAVUnicodeString samplePath;
  QAVFindPath("QAVStartupPath",
              QAVMakePath(QAVUnicodeString(kind->folder), Raw(PresetKey(*kind, 0, "_File"))),
              samplePath);
  sample->SetDescription(Text(PresetKey(*kind, 0, "_Description"), "Preset Description"));
  sample->SetPicture(icon(0));
  sample->SetUnavailable(0);
  _panel->AddItem(sample);
  ++_itemCount;

  if (_installPath.IsEmpty())
    ShowContentWarning("ImportWarning4.Text",
                       "Please fill in content installation path in Preferences.");

  for (int n = 1; n < count; ++n) {
    QAVRbaMaterialCatalogImporterItem* tile = item(n);
    tile->SetTitle(Text(PresetKey(*kind, n, "_Name"), "Preset Name"));
    const QAVUnicodeString file = Raw(PresetKey(*kind, n, "_File"));
    if (!FindContentFile(_kind, _installPath, file).IsEmpty()) {
      tile->SetDescription(Text(PresetKey(*kind, n, "_Description"), "Preset Description"));
      tile->SetPicture(
          _installPath.IsEmpty()
              ? icon(n)
              : QAVMakePath(QAVMakePath(QAVMakePath(_installPath, QAVUnicodeString("resources")),
                                        QAVUnicodeString("graphic")),
                            icon(n)));
      tile->SetUnavailable(0);
      _panel->AddItem(tile);
      ++_itemCount;
    } else {
      tile->SetDescription(Text("WarningDescription", "No description available"));
      const QAVUnicodeString given = Raw(PresetKey(*kind, n, "_Icon"));
      tile->SetPicture(given.IsEmpty() ? QAVUnicodeString(kind->missingThumbnail)
                                       : WithSuffix(given, "_teaser"));
      tile->SetUnavailable(1);
      _panel->AddItem(tile);
    }
  }
  if (_itemCount <= 1 && !_installPath.IsEmpty())
    ShowContentWarning("ImportWarning5.Text",
                       "No ressources found. Please check the installation path in Preferences.");
  return S_OK;
}

void QAVRbaMaterialCatalogImporterCmd::ShowContentWarning(const char* key, const char* text) {
  auto* box = new QAVDlgNotify("ContentOrbelWarning");
  box->SetTitle(Text("ImportWarningTitle.Text", "Import warning"));
  QAVUnicodeString message = Text("ImportWarning3.Text", "Cannot find any content to import.");
  message += QAVUnicodeString("\n");
  message += Text(key, text);
  box->SetText(message);
  box->DisplayBlocked();
  box->RequestDelayedDestruction();
}

QAVUnicodeString QAVRbaMaterialCatalogImporterCmd::FindContentFile(
    const QAVUnicodeString& kind, const QAVUnicodeString& installPath,
    const QAVUnicodeString& fileName) {
  const Kind* found = FindKind(kind);
  if (!found || fileName.IsEmpty()) return {};
  if (std::string(found->name) == "Material" && fileName.ToString() == kSampleMaterials) {
    QAVUnicodeString path;
    if (FAILED(QAVFindPath("QAVStartupPath", QAVMakePath(QAVUnicodeString("materials"), fileName),
                           path)))
      return {};
    return path;
  }
  if (installPath.IsEmpty()) return {};
  const QAVUnicodeString folder = QAVMakePath(QAVMakePath(installPath, QAVUnicodeString("startup")),
                                              QAVUnicodeString(found->folder));
  for (int v = 9; v >= 0; --v) {
    QAVUnicodeString candidate =
        QAVMakePath(folder, WithSuffix(fileName, "_V0" + std::to_string(v)));
    if (Readable(candidate)) return candidate;
  }
  return {};
}

void QAVRbaMaterialCatalogImporterCmd::OnSelectItem(QAVCommand*, QAVNotification*, void*) {
  const Kind* kind = FindKind(_kind);
  if (!_panel || !kind) return;
  const int n = _panel->GetSelectedIndex();
  if (n == -1) {
    ShowFurtive(Text("WarningSelection", "No content selected"));
    return;
  }
  _selectedTitle = Text(PresetKey(*kind, n, "_Name"), "Preset Name");
  const QAVUnicodeString type = Text(PresetKey(*kind, n, "_Type"), kind->presetType);
  if (type.ToString() == "ORLIX") return;
  Confirm(Raw(PresetKey(*kind, n, "_File")));
}

void QAVRbaMaterialCatalogImporterCmd::Confirm(const QAVUnicodeString& fileName) {
  const Kind* kind = FindKind(_kind);
  _contentFile = FindContentFile(_kind, _installPath, fileName);
  QAVString space;
  QAVPLMConnectionService* connection = nullptr;
  if (SUCCEEDED(QAVPLMComponentServices::GetConnectionService(connection)) && connection)
    connection->GetCurrentSpace(space);
  if (_contentFile.IsEmpty()) {
    ShowFurtive(Text(kind->koKey, "Import failed"));
    return;
  }
  if (_confirmationBox) _confirmationBox->RequestDelayedDestruction();
  _confirmationBox =
      QAVRef<QAVVidFraMessageBox>(new QAVVidFraMessageBox("ImportOrbelWarning", 3, 18));
  QAVUnicodeString informative =
      Text("ImportWarning1.Text",
           "You are going to import data As Reference following collaborative space:");
  informative += QAVUnicodeString(" ");
  informative += QAVUnicodeString(space.c_str());
  _confirmationBox->SetInformativeText(informative);
  _confirmationBox->SetText(
      Text("ImportWarning2.Text",
           "To share these data, be careful to import them in a public location."));
  _confirmationBox->SetTitle(Text("ImportWarningTitle.Text", "Import warning"));
  _confirmationBox->SetCloseButton(false);
  _confirmationBox->SetAutoClose(true);
  _confirmationBox->SetActive(true);
  _confirmationBox->SetResizable(false);
  _confirmationBox->SetModal(true);
  AddAnalyseNotificationCB(_confirmationBox.get(), QAVVidFraMessageBox::ACCEPT(),
                           &QAVRbaMaterialCatalogImporterCmd::OnAccept, nullptr);
  AddAnalyseNotificationCB(_confirmationBox.get(), QAVVidFraMessageBox::REJECT(),
                           &QAVRbaMaterialCatalogImporterCmd::OnCancel, nullptr);
  _confirmationBox->SetVisibility(true);
}

void QAVRbaMaterialCatalogImporterCmd::OnAccept(QAVCommand*, QAVNotification*, void*) {
  const Kind* kind = FindKind(_kind);
  ClosePanel();
  const HRESULT result = QAVTaskController::Schedule(&_task, 0, nullptr, 1, 0, 0.0, 1);
  _importResult = SUCCEEDED(result) ? S_OK : E_FAIL;
  if (kind)
    ShowFurtive(SUCCEEDED(result) ? Text(kind->okKey, "Import successful")
                                  : Text(kind->koKey, "Import failed"));
  End();
}

HRESULT QAVRbaMaterialCatalogImporterCmd::PerformTask(QAVIProgressTaskUI* ui, void*) {
  _progress = ui;
  if (ui) {
    ui->SetRange(0, 100);
    ui->SetTitle(_selectedTitle);
    ui->SetProgress(10);
  }
  const char* tempDir = QAVRbaEnvironment::TempPath();
  const QAVUnicodeString report =
      tempDir && *tempDir ? QAVUnicodeString(tempDir) : QAVGetTempDirectory();
  const QAVPLMBriefcaseProtectedServices::Attributes attributes = {
      {QAVString("Maturity"), QAVUnicodeString("PRIVATE")}, {QAVString("Report"), report}};
  QAVListValQAVUnicodeString ids;
  HRESULT result =
      QAVPLMBriefcaseProtectedServices::ImportAsRef("PLM1", _contentFile, attributes, ids);
  if (FAILED(result)) {
    if (ui) ui->SetProgress(60);
    result = QAVPLMBriefcaseProtectedServices::ImportAsRef("TST", _contentFile, attributes, ids);
  }
  // A call that succeeded without importing anything did not work either.
  if (SUCCEEDED(result) && ids.Size() == 0) result = E_FAIL;
  _progress = nullptr;
  return SUCCEEDED(result) ? S_OK : E_FAIL;
}

void QAVRbaMaterialCatalogImporterCmd::ShowFurtive(const QAVUnicodeString& text) const {
  const auto message = QAVMakeRef<QAVNotificationDialog>(
      QAVApplicationFrame::GetFrame()->GetApplicationDocument(), "notifFurtifMsg");
  message->SetText(text);
  message->Show();
}

void QAVRbaMaterialCatalogImporterCmd::OnCancel(QAVCommand*, QAVNotification*, void*) {
  ClosePanel();
  End();
}

void QAVRbaMaterialCatalogImporterCmd::ClosePanel() {
  if (!_dialog) return;
  _dialog->RequestDelayedDestruction();
  _dialog.Reset();
}

void QAVRbaMaterialCatalogImporterCmd::End() {
  if (_ended) return;
  _ended = true;
  _panel.Reset();
  if (_confirmationBox) _confirmationBox->RequestDelayedDestruction();
  _confirmationBox.Reset();
  QAVRbaPanelManager* manager = QAVRbaPanelManager::GetPanelManager();
  if (manager && manager->IsPanelOpen(kPanelId, _window.get()) && _registered)
    manager->RemovePanel(kPanelId, _window.get());
  RequestDelayedDestruction();
}
