// The host's context-bar manager: the bars registered under context
// identifiers, shown by frames while registered, refreshed on request, with a
// fade effect. While the driver records, every call is journaled ("ctx-bar":
// the operation, then its arguments).
#ifndef QAVIAfrCtxBarManager_h
#define QAVIAfrCtxBarManager_h

#include <vector>

#include "QAVAfrCtxBarFrame.h"
#include "QAVBaseUnknown.h"
#include "QAVString.h"

class QAVHOST_API QAVIAfrCtxBarManager : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  // Registers a bar (its late type) under a context and shows it: S_OK;
  // S_FALSE when it already is; E_FAIL for an empty name.
  virtual HRESULT RegisterCtxBar(const QAVString& barName, const QAVString& contextId) = 0;
  // Removes it and its frame: S_OK, or E_FAIL when it was not registered there.
  virtual HRESULT UnregisterCtxBar(const QAVString& barName, const QAVString& contextId) = 0;
  // Refreshes the bars of a context (empty: the current one, "All_CtxId"); with
  // `repaint` they fill their rows again.
  virtual HRESULT RefreshCtxBars(const QAVString& contextName, bool repaint) = 0;
  virtual void SetFadeEffect(unsigned char fade) = 0;
  virtual unsigned char GetFadeEffect() const = 0;

  // The frames of the registered bars, in the order of registration (borrowed).
  virtual std::vector<QAVAfrCtxBarFrame*> GetFrames() const = 0;
  virtual QAVAfrCtxBarFrame* FindFrame(const QAVString& barName) const = 0;
};

// The manager of the session, with a new reference for the caller; null when
// the host has none (the driver can turn it off).
QAVHOST_API QAVIAfrCtxBarManager* GetAfrCtxBarManager();

#endif
