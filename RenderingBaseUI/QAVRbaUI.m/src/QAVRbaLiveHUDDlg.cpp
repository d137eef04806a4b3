#include "QAVRbaLiveHUDDlg.h"

#include <string>

#include "QAVMsgCatalog.h"
#include "QAVRbaImageServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"

namespace {

constexpr const char* kCatalog = "QAVRbaLiveHUDDlg";

QAVUnicodeString Message(const char* key, const QAVUnicodeString* parameters = nullptr,
                         int count = 0) {
  return QAVMsgCatalog::BuildMessage(QAVString(kCatalog), QAVString(key), parameters, count);
}

QAVUnicodeString Decimal(int value) { return QAVUnicodeString(std::to_string(value).c_str()); }

// The file's name without its folder and extension: "/a/b/sky.hdr" gives "sky".
QAVUnicodeString NamePart(const QAVUnicodeString& path) {
  QAVUnicodeString base;
  QAVUnicodeString extension;
  if (!path.IsEmpty()) QAVRbaImageServices::SplitPath(path, base, extension);
  const std::string& text = base.str();
  const std::size_t slash = text.find_last_of("/\\");
  return slash == std::string::npos ? base : QAVUnicodeString(text.substr(slash + 1));
}

}  // namespace

QAVRbaLiveHUDDlg::QAVRbaLiveHUDDlg(QAVViewer* viewer, const char* name, int width, int height)
    : QAVDialog(viewer, name, width, height) {
  auto* main = new QAVDlgWidget(this, "MainLayout", QAVDlgKind::Layout);
  auto* layer = new QAVDlgWidget(main, "LayerHUD", QAVDlgKind::Layout);
  auto* background = new QAVDlgWidget(layer, "BackGroundHUD", QAVDlgKind::Frame);
  auto* progress = new QAVDlgWidget(background, "ProgressLayout", QAVDlgKind::Layout);
  _progressLabel = new QAVDlgWidget(progress, "renderingInProgress", QAVDlgKind::Label);
  _progressLabel->SetTitle(Message("RenderingInProgress"));
  auto* infos = new QAVDlgWidget(background, "InfosRenderingFrame", QAVDlgKind::Frame);
  infos->SetTitle(Message("InfosRendering"));
  _resolutionLabel = new QAVDlgWidget(infos, "resolutionLabel", QAVDlgKind::Label);
  _ambienceLabel = new QAVDlgWidget(infos, "ambienceLabel", QAVDlgKind::Label);
  _backplateLabel = new QAVDlgWidget(infos, "backplateLabel", QAVDlgKind::Label);
  _resourcesLabel = new QAVDlgWidget(infos, "resourcesLabel", QAVDlgKind::Label);
  _frameLabel = new QAVDlgWidget(infos, "nbFrameLabel", QAVDlgKind::Label);
  _totalLabel = new QAVDlgWidget(infos, "nbTotalLabel", QAVDlgKind::Label);
}

QAVRbaLiveHUDDlg::~QAVRbaLiveHUDDlg() = default;

void QAVRbaLiveHUDDlg::SetResolution(const int& width, const int& height) const {
  if (!_resolutionLabel) return;
  const QAVUnicodeString parameters[2] = {Decimal(width), Decimal(height)};
  _resolutionLabel->SetTitle(Message("Resolution", parameters, 2));
}

void QAVRbaLiveHUDDlg::SetAmbienceInfos(const QAVUnicodeString& path) const {
  if (!_ambienceLabel) return;
  QAVUnicodeString name = NamePart(path);
  // A match at the very first character does not count.
  if (name.SearchSubString(QAVUnicodeString("AmbienceEditorTmp")) > 0) {
    if (QAVSettingRepository* live =
            QAVRbaRenderingSettings::Open(QAVRbaRenderingSettings::kLiveCurrentAmbience))
      QAVRbaRenderingSettings::Read(*live, QAVRbaRenderingSettings::kLiveCurrentAmbience, name);
  }
  _ambienceLabel->SetTitle(Message("Ambience", &name, 1));
}

void QAVRbaLiveHUDDlg::SetBackplateInfos(const QAVUnicodeString& path) const {
  if (!_backplateLabel) return;
  if (path.IsEmpty()) {
    _backplateLabel->SetVisibility(false);
    return;
  }
  const QAVUnicodeString name = NamePart(path);
  _backplateLabel->SetTitle(Message("Backplate", &name, 1));
  _backplateLabel->SetVisibility(true);
}

void QAVRbaLiveHUDDlg::SetRenderInfos(const QAVUnicodeString& resources, const int& total,
                                      const QAVUnicodeString& /*third*/,
                                      const QAVUnicodeString& render, bool inProgress) const {
  if (!_progressLabel || !_resourcesLabel || !_frameLabel || !_totalLabel) return;
  for (QAVDlgWidget* label : {_progressLabel, _resourcesLabel, _frameLabel, _totalLabel})
    label->SetVisibility(inProgress);
  _resourcesLabel->SetTitle(Message("Resources", &resources, 1));
  _frameLabel->SetTitle(Message("Render", &render, 1));
  const QAVUnicodeString count = Decimal(total);
  _totalLabel->SetTitle(Message("Total", &count, 1));
}
