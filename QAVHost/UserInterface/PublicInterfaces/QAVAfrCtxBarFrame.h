// The frame that shows one context bar: it makes the bar through its late type,
// holds the bar's rows, and has the bar fill them when it is shown and at each
// refresh that repaints. Pressing one of its buttons starts the command of the
// header named by the button's "Command" property (QAVCommandHeader).
#ifndef QAVAfrCtxBarFrame_h
#define QAVAfrCtxBarFrame_h

#include <string>
#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVIAfrCtxBar.h"
#include "QAVICAfrComponent.h"
#include "QAVRef.h"
#include "QAVString.h"

class QAVCommand;

class QAVHOST_API QAVAfrCtxBarFrame : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // A frame for the bar of that late type, with rows of those names.
  explicit QAVAfrCtxBarFrame(const QAVString& lateType,
                             const std::vector<QAVString>& rowNames = {"AfrContextBarRow1"});
  ~QAVAfrCtxBarFrame() override;
  QAVAfrCtxBarFrame(const QAVAfrCtxBarFrame&) = delete;
  QAVAfrCtxBarFrame& operator=(const QAVAfrCtxBarFrame&) = delete;

  const QAVString& GetLateType() const { return _lateType; }
  // Makes the bar on the first call, then has it fill its rows: S_OK; E_FAIL
  // when the late type gives no bar.
  HRESULT Show();
  bool IsShown() const { return _shown; }
  // A shown bar fills its rows again when `repaint` is true.
  HRESULT Refresh(bool repaint);
  int GetFillCount() const { return _fills; }

  QAVIAfrCtxBar* GetBar() const { return _bar.get(); }  // borrowed; null before Show
  int GetRowCount() const { return static_cast<int>(_rows.size()); }
  QAVICAfrComponent* GetRow(int index) const;  // borrowed
  QAVICAfrComponent* FindRow(const QAVString& name) const;
  // The rows and their items as text (QAVICAfrComponent::Describe).
  std::string Describe() const;

  // Presses the button whose "Command" is `header`: a starter of a row, or one
  // in a container (opened first). S_OK with `started` the command (owned by
  // the host; it may already have asked for its end) or null when the header
  // starts none; E_FAIL, with `error`, when the bar has no such button or no
  // header of that name exists.
  HRESULT Press(const QAVString& header, QAVCommand*& started, std::string& error);

 private:
  QAVString _lateType;
  std::vector<QAVRef<QAVICAfrComponent>> _rows;
  QAVRef<QAVBaseUnknown> _component;  // the object of the late type
  QAVRef<QAVIAfrCtxBar> _bar;
  bool _shown = false;
  int _fills = 0;
};

#endif
