// The position and orientation panel of a texture placement: a dialog box that
// shows the placement of the projection (its origin and its three axes), its
// mapping type and its scale, and follows them as a mapping observer of the
// object under edition. It reaches the object through its mapping model
// updater, of which it holds a reference.
//
// Widgets: "MainLayout" holding the labels "mappingTypeValue", "originValue",
// "xAxisValue", "yAxisValue", "zAxisValue"; texts from the catalog
// "QAVRbaEditMatrixDlg" (keys "Title", "MappingType", "Origin", "XAxis",
// "YAxis", "ZAxis", with built-in English defaults).
#ifndef QAVRbaEditMatrixDlg_h
#define QAVRbaEditMatrixDlg_h

#include "QAVDlgWidget.h"
#include "QAVIRbaMappingModelUpdater.h"
#include "QAVIRbaMappingObserver.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"

class QAVIRbaMappingObservable;

class QAVRBAUI_API QAVRbaEditMatrixDlg : public QAVDialog {
  QAV_DECLARE_CLASS
 public:
  // `father` is not used by the panel (it may be null); `updater` may be null
  // (an empty panel).
  QAVRbaEditMatrixDlg(QAVCommand* father, const char* identifier,
                      QAVIRbaMappingModelUpdater* updater);
  ~QAVRbaEditMatrixDlg() override;

  QAVIRbaMappingModelUpdater* GetUpdater() const { return _updater.get(); }
  // How many times the panel showed the placement anew.
  int GetRefreshCount() const { return _refreshes; }

  // As a mapping observer: it shows every change; aligning with the camera is
  // not its business (E_FAIL).
  HRESULT QueryInterface(const IID& iid, void** object) override;

 private:
  void Refresh();
  void SetLine(const char* widget, const char* key, const char* defaultText,
               const QAVUnicodeString& value);

  class ObserverTie : public QAVIRbaMappingObserver {
   public:
    explicit ObserverTie(QAVRbaEditMatrixDlg& panel) : _panel(panel) {}
    HRESULT UpdatePosAndOrientation() override { return Refreshed(); }
    HRESULT UpdateMappingType() override { return Refreshed(); }
    HRESULT UpdateOtherMappingAttributes() override { return Refreshed(); }
    HRESULT UpdateInitialPos() override { return Refreshed(); }
    HRESULT UpdatePanel() override { return Refreshed(); }
    HRESULT ShowManipulatorRep() override { return S_OK; }
    HRESULT HideManipulatorRep() override { return S_OK; }
    HRESULT AlignWithCameraView() override { return E_FAIL; }

   private:
    HRESULT Refreshed() {
      _panel.Refresh();
      return S_OK;
    }
    QAVRbaEditMatrixDlg& _panel;
  };

  QAVRef<QAVIRbaMappingModelUpdater> _updater;
  QAVRef<QAVIRbaMappingObservable> _observable;
  ObserverTie _tie{*this};
  int _refreshes = 0;
};

#endif
