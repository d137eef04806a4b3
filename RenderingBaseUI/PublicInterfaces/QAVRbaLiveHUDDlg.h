// The heads-up display laid over the 3D view while the live renderer works:
// the resolution rendered, the ambience and backplate in use, the resources of
// the render, the frames rendered and their total, and a line saying that
// rendering is in progress. Its texts come from the message catalog
// "QAVRbaLiveHUDDlg".
//
// Widgets, by name: "MainLayout" > "LayerHUD" > "BackGroundHUD" > the layout
// "ProgressLayout" with the label "renderingInProgress", then the frame
// "InfosRenderingFrame" (titled by the key "InfosRendering") with the labels
// "resolutionLabel", "ambienceLabel", "backplateLabel", "resourcesLabel",
// "nbFrameLabel" and "nbTotalLabel".
#ifndef QAVRbaLiveHUDDlg_h
#define QAVRbaLiveHUDDlg_h

#include "QAVDlgWidget.h"
#include "QAVRbaUIExport.h"
#include "QAVUnicodeString.h"

class QAVRBAUI_API QAVRbaLiveHUDDlg : public QAVDialog {
 public:
  // The display over `viewer` (not owned; may be null), width x height pixels.
  // Owned by the host like every command: end it with RequestDelayedDestruction.
  QAVRbaLiveHUDDlg(QAVViewer* viewer, const char* name, int width, int height);
  ~QAVRbaLiveHUDDlg() override;

  // "Resolution" with the width and the height in decimal.
  void SetResolution(const int& width, const int& height) const;
  // "Ambience" with the name part of `path` (its directories kept, its
  // extension dropped; empty for an empty path). When that name holds
  // "AmbienceEditorTmp" after its first character, the ambience is the
  // editor's temporary one and its name is the "CurrentAmbience" setting of
  // "RenderingLiveSettings".
  void SetAmbienceInfos(const QAVUnicodeString& path) const;
  // "Backplate" with the name part of `path`, shown; an empty path hides it.
  void SetBackplateInfos(const QAVUnicodeString& path) const;
  // "Resources", "Render" and "Total" (in decimal); the progress line and these
  // three are shown only while `inProgress`. The third text is not displayed.
  void SetRenderInfos(const QAVUnicodeString& resources, const int& total,
                      const QAVUnicodeString& third, const QAVUnicodeString& render,
                      bool inProgress) const;

 private:
  QAVDlgWidget* _progressLabel = nullptr;
  QAVDlgWidget* _resolutionLabel = nullptr;
  QAVDlgWidget* _ambienceLabel = nullptr;
  QAVDlgWidget* _backplateLabel = nullptr;
  QAVDlgWidget* _resourcesLabel = nullptr;
  QAVDlgWidget* _frameLabel = nullptr;
  QAVDlgWidget* _totalLabel = nullptr;
};

#endif
