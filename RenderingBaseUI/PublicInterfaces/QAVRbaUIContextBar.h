// What the four mapping context bars share: the operations that append items to
// a row (command starters, separators, the mapping-type container, the scale
// container, the align-with-camera pair). Each bar is an extension of its late
// type ("<class>Component") for QAVIAfrCtxBar and fills its first row,
// "AfrContextBarRow1", in its own order.
#ifndef QAVRbaUIContextBar_h
#define QAVRbaUIContextBar_h

#include "QAVAdapterAfrCtxBar.h"
#include "QAVICAfrComponent.h"
#include "QAVRbaUIExport.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVRBAUI_API QAVRbaUIContextBar : public QAVAdapterAfrCtxBar {
  QAV_DECLARE_CLASS
 public:
  // Each does nothing for a null parent.
  void AppendCommandInRow(QAVICAfrComponent* parent, const QAVString& name);
  void AppendSeparatorInRow(QAVICAfrComponent* parent, const QAVString& name);
  // A container holding the six mapping-type starters, the current type first.
  void AppendMappingContainerInRow(QAVICAfrComponent* parent, const QAVString& name);
  // A container with fit-to-support then fit-to-texture (no bar uses it).
  void AppendScaleContainerInRow(QAVICAfrComponent* parent, const QAVString& name);
  // The align button and "pRowSeparator5", unless the mapping is UV or
  // spherical.
  void AppendAlignWithCameraViewInRow(QAVICAfrComponent* parent, const QAVString& name);

  // Overridden empty: the bars fill through FillCtxBar.
  void FillContextBar() override {}
  // Fills "AfrContextBarRow1" (nothing without it); always 0.
  HRESULT FillCtxBar(QAVString model) override;

 protected:
  enum class Item { Command, Separator, MappingContainer, AlignWithCameraView };
  struct RowItem {
    Item kind;
    const char* name;
  };
  QAVRbaUIContextBar() = default;
  // The items of the bar's row, in order.
  virtual const RowItem* GetRowItems(int& count) const = 0;

 private:
  // A new item of `parent` whose "Command" is its name; null for a null parent
  // or when the parent makes none.
  static QAVRef<QAVBaseUnknown> AppendItem(QAVICAfrComponent* parent, const char* type,
                                           const QAVString& name);
};

#endif
