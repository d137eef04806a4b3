#include "QAVRbaEditMatrixDlg.h"

#include <cstdio>

#include "QAVIRbaMappingObservable.h"
#include "QAVMsgCatalog.h"

QAV_IMPLEMENT_CLASS(QAVRbaEditMatrixDlg, QAVDialog, "RenderingBaseUI");

namespace {

QAVUnicodeString Text(const char* key, const char* defaultText) {
  return QAVMsgCatalog::BuildMessage(QAVString("QAVRbaEditMatrixDlg"), QAVString(key), nullptr, 0,
                                     QAVUnicodeString(defaultText));
}

QAVUnicodeString Triple(const QAVMathVector& v) {
  char text[96];
  (void)std::snprintf(text, sizeof text, "%.4g, %.4g, %.4g", v.x, v.y, v.z);
  return QAVUnicodeString(text);
}

const char* TypeName(int type) {
  switch (type) {
    case QAVIRbaMappingObservable::Planar:
      return "planar";
    case QAVIRbaMappingObservable::Spherical:
      return "spherical";
    case QAVIRbaMappingObservable::FiniteCylindrical:
      return "finite cylindrical";
    case QAVIRbaMappingObservable::Cubical:
      return "cubical";
    case QAVIRbaMappingObservable::UV:
      return "UV";
    case QAVIRbaMappingObservable::InfiniteCylindrical:
      return "infinite cylindrical";
    default:
      return "unknown";
  }
}

}  // namespace

QAVRbaEditMatrixDlg::QAVRbaEditMatrixDlg(QAVCommand* /*father*/, const char* identifier,
                                         QAVIRbaMappingModelUpdater* updater)
    : QAVDialog(identifier), _updater(updater) {
  _tie.AggregateInto(this);
  SetTitle(Text("Title", "Position and orientation"));
  // New widgets are held by their fathers, which the analyzer does not see.
  // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)
  auto* layout = new QAVDlgWidget(this, "MainLayout", QAVDlgKind::Layout);
  for (const char* name :
       {"mappingTypeValue", "originValue", "xAxisValue", "yAxisValue", "zAxisValue"})
    new QAVDlgWidget(layout, name, QAVDlgKind::Label);
  if (_updater) _observable = QAVQuery<QAVIRbaMappingObservable>(_updater.get());
  if (_observable) _observable->AddObserver(&_tie);
  Refresh();
  // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
}

QAVRbaEditMatrixDlg::~QAVRbaEditMatrixDlg() {
  if (_observable) _observable->RemoveObserver(&_tie);
  _tie.AggregateInto(nullptr);
}

HRESULT QAVRbaEditMatrixDlg::QueryInterface(const IID& iid, void** object) {
  if (object && iid == QAVIRbaMappingObserver::ClassId()) {
    AddRef();
    *object = static_cast<QAVBaseUnknown*>(&_tie);
    return S_OK;
  }
  return QAVDialog::QueryInterface(iid, object);
}

void QAVRbaEditMatrixDlg::SetLine(const char* widget, const char* key, const char* defaultText,
                                  const QAVUnicodeString& value) {
  if (QAVDlgWidget* label = FindWidget(widget))
    label->SetTitle(Text(key, defaultText) + QAVUnicodeString(": ") + value);
}

void QAVRbaEditMatrixDlg::Refresh() {
  ++_refreshes;
  if (_observable)
    SetLine("mappingTypeValue", "MappingType", "Mapping",
            QAVUnicodeString(TypeName(_observable->GetMappingType())));
  QAVMathTransformation isometry;
  if (!_updater || FAILED(_updater->GetIsometryMatrix(isometry))) return;
  SetLine("originValue", "Origin", "Origin", Triple(isometry.translation));
  SetLine("xAxisValue", "XAxis", "X axis", Triple(isometry.xAxis));
  SetLine("yAxisValue", "YAxis", "Y axis", Triple(isometry.yAxis));
  SetLine("zAxisValue", "ZAxis", "Z axis", Triple(isometry.zAxis));
}
