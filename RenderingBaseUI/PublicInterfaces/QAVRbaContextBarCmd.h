// The shape shared by the context bar's commands. Activated, a command takes
// the object under edition from the context bar manager, announces
// CONTEXT_BAR_BEGIN_ACTION, acts on the object through its mapping interfaces,
// has the manager follow, announces CONTEXT_BAR_END_ACTION (both through the
// current layout's callback manager, with the object as data), and asks for
// its end. Each command is a one-shot of mode 1 named after its class, made by
// a factory registered under that name when the library loads.
#ifndef QAVRbaContextBarCmd_h
#define QAVRbaContextBarCmd_h

#include "QAVCommand.h"
#include "QAVRbaUIExport.h"

class QAVRbaContextBarManager;

class QAVRBAUI_API QAVRbaContextBarCmd : public QAVCommand {
  QAV_DECLARE_CLASS
 public:
  ~QAVRbaContextBarCmd() override;
  // Always 0. Without a manager it reports the failed pointer check and stays
  // alive.
  int Activate(QAVCommand* from, QAVNotification* notification) override;

 protected:
  explicit QAVRbaContextBarCmd(const char* className);
  // The action on the object under edition (not null).
  virtual void ActOnObject(QAVBaseUnknown* object) = 0;
  // What the manager does next, even when the object had nothing to do.
  virtual void ActOnManager(QAVRbaContextBarManager& /*manager*/) {}
};

#endif
