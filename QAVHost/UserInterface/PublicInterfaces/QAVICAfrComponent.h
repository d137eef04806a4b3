// A component of a context bar: a row, and the items a bar appends to it —
// starters ("QAVCmdStarter": a button that starts the command whose header is
// its "Command" property), separators ("QAVCmdSeparator") and containers
// ("QAVCmdContainer": a group of starters that shows its first one and opens
// the others). Items are kept in the order they were made.
#ifndef QAVICAfrComponent_h
#define QAVICAfrComponent_h

#include <string>

#include "QAVAfrPropertyBundle.h"
#include "QAVBaseUnknown.h"
#include "QAVString.h"

class QAVHOST_API QAVICAfrComponent : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  virtual const QAVString& GetComponentType() const = 0;
  virtual const QAVString& GetComponentName() const = 0;
  virtual const QAVAfrPropertyBundle& GetProperties() const = 0;

  // Makes an item of this component, appended to its items: S_OK with `created`
  // holding a new reference for the caller; E_FAIL, null, for an unknown type.
  // `style` may be empty.
  virtual HRESULT CreateComponent(const QAVString& type, const QAVString& name,
                                  const QAVString& style, const QAVAfrPropertyBundle& properties,
                                  QAVBaseUnknown*& created) = 0;
  virtual int GetComponentCount() const = 0;
  virtual QAVICAfrComponent* GetComponent(int index) const = 0;  // borrowed; null out of range

  // Called with true by a bar before it fills the component anew: the items of
  // the previous filling go.
  virtual void SetRebuildMode(bool rebuild) = 0;

  // The component and its items as text, one per line, indented by depth:
  // "<type> <name>" (a starter shows "[<Command>]" when it differs from its name).
  virtual std::string Describe(int depth = 0) const = 0;
};

#endif
