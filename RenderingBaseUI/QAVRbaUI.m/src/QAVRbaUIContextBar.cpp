#include "QAVRbaUIContextBar.h"

#include <string>
#include <vector>

#include "QAVDiagnostics.h"
#include "QAVRbaContextBarManager.h"
#include "QAVRef.h"

QAV_IMPLEMENT_CLASS(QAVRbaUIContextBar, QAVAdapterAfrCtxBar, "RenderingBaseUI");

namespace {

constexpr const char* kPlanar = "QAVRbaContextBarTypePlanarHdr";
constexpr const char* kSpherical = "QAVRbaContextBarTypeSphericalHdr";
constexpr const char* kFiniteCylindrical = "QAVRbaContextBarTypeFiniteCylindricalHdr";
constexpr const char* kInfiniteCylindrical = "QAVRbaContextBarTypeInfiniteCylindricalHdr";
constexpr const char* kCubical = "QAVRbaContextBarTypeCubicalHdr";
constexpr const char* kUV = "QAVRbaContextBarTypeUVHdr";

// The header of the button that shows a mapping type; empty for a value that
// is not one.
const char* HeaderOf(int mappingType) {
  switch (mappingType) {
    case QAVIRbaMappingObservable::Planar:
      return kPlanar;
    case QAVIRbaMappingObservable::Spherical:
      return kSpherical;
    case QAVIRbaMappingObservable::FiniteCylindrical:
      return kFiniteCylindrical;
    case QAVIRbaMappingObservable::Cubical:
      return kCubical;
    case QAVIRbaMappingObservable::UV:
      return kUV;
    case QAVIRbaMappingObservable::InfiniteCylindrical:
      return kInfiniteCylindrical;
    default:
      return "";
  }
}

}  // namespace

QAVRef<QAVBaseUnknown> QAVRbaUIContextBar::AppendItem(QAVICAfrComponent* parent, const char* type,
                                                      const QAVString& name) {
  if (!parent) return nullptr;
  QAVAfrPropertyBundle properties;
  properties.SetString(QAVString("Command"), name);
  QAVBaseUnknown* created = nullptr;
  if (FAILED(parent->CreateComponent(QAVString(type), name, QAVString(), properties, created)))
    return nullptr;
  return QAVRef<QAVBaseUnknown>::Adopt(created);
}

void QAVRbaUIContextBar::AppendCommandInRow(QAVICAfrComponent* parent, const QAVString& name) {
  AppendItem(parent, "QAVCmdStarter", name);
}

void QAVRbaUIContextBar::AppendSeparatorInRow(QAVICAfrComponent* parent, const QAVString& name) {
  AppendItem(parent, "QAVCmdSeparator", name);
}

void QAVRbaUIContextBar::AppendMappingContainerInRow(QAVICAfrComponent* parent,
                                                     const QAVString& name) {
  QAVRef<QAVICAfrComponent> container =
      QAVQuery<QAVICAfrComponent>(AppendItem(parent, "QAVCmdContainer", name).get());
  if (!container) return;

  std::vector<std::string> headers = {
      kPlanar, kCubical, kSpherical, kFiniteCylindrical, kInfiniteCylindrical, kUV};
  QAVRbaContextBarManager* pContextBarManager = QAVRbaContextBarManager::GetContextBarManager();
  if (!pContextBarManager) {
    const std::string message =
        std::string("QAVRbaContextBarManager is NULL ") + IsA() + "::AppendMappingContainerInRow";
    QAV_CHECK_POINTER(pContextBarManager, message.c_str());
    return;
  }
  const std::string current = HeaderOf(pContextBarManager->GetCurrentMappingType());
  std::vector<std::string> ordered = {current};
  for (const std::string& header : headers)
    if (header != current) ordered.push_back(header);
  for (const std::string& header : ordered)
    AppendCommandInRow(container.get(), QAVString(header.c_str()));
}

void QAVRbaUIContextBar::AppendScaleContainerInRow(QAVICAfrComponent* parent,
                                                   const QAVString& name) {
  if (QAVRef<QAVICAfrComponent> container =
          QAVQuery<QAVICAfrComponent>(AppendItem(parent, "QAVCmdContainer", name).get())) {
    AppendCommandInRow(container.get(), QAVString("QAVRbaContextBarFitToSupportScaleHdr"));
    AppendCommandInRow(container.get(), QAVString("QAVRbaContextBarFitToTextureScaleHdr"));
  }
}

void QAVRbaUIContextBar::AppendAlignWithCameraViewInRow(QAVICAfrComponent* parent,
                                                        const QAVString& name) {
  QAVRbaContextBarManager* pContextBarManager = QAVRbaContextBarManager::GetContextBarManager();
  // This operation reports with the sticker's mapping-container message.
  if (!QAV_CHECK_POINTER(pContextBarManager,
                         "QAVRbaContextBarManager is NULL "
                         "QAVRbaUIContextBarSticker::"
                         "AppendMappingContainerInRow"))
    return;
  const int type = pContextBarManager->GetCurrentMappingType();
  if (!parent || type == QAVIRbaMappingObservable::UV ||
      type == QAVIRbaMappingObservable::Spherical)
    return;
  AppendCommandInRow(parent, name);
  AppendSeparatorInRow(parent, QAVString("pRowSeparator5"));
}

HRESULT QAVRbaUIContextBar::FillCtxBar(QAVString /*model*/) {
  QAVICAfrComponent* found = GetComponent(QAVString("AfrContextBarRow1"));
  if (!found) return S_OK;
  auto row = QAVRef<QAVICAfrComponent>::Adopt(found);
  row->SetRebuildMode(true);
  int count = 0;
  const RowItem* items = GetRowItems(count);
  for (int i = 0; i < count; ++i) {
    const QAVString name(items[i].name);
    switch (items[i].kind) {
      case Item::Command:
        AppendCommandInRow(row.get(), name);
        break;
      case Item::Separator:
        AppendSeparatorInRow(row.get(), name);
        break;
      case Item::MappingContainer:
        AppendMappingContainerInRow(row.get(), name);
        break;
      case Item::AlignWithCameraView:
        AppendAlignWithCameraViewInRow(row.get(), name);
        break;
    }
  }
  return S_OK;
}
