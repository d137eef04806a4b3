#include "QAVRbaLiveSimpleInfoDlg.h"

#include "QAVCommandHeader.h"
#include "QAVMsgCatalog.h"

QAV_IMPLEMENT_CLASS(QAVRbaLiveSimpleInfoDlg, QAVCommand, "RenderingBaseUI");

namespace {

// The box's button: pressing it (activating it) restarts the renderer.
class RestartButton : public QAVCommand {
 public:
  explicit RestartButton(QAVRbaLiveSimpleInfoDlg* box) : QAVCommand(box, "restartButton") {}
  int Activate(QAVCommand* /*from*/, QAVNotification* notification) override {
    QAVRbaLiveSimpleInfoDlg::RestartCB(GetFather(), notification, nullptr);
    return 1;
  }
};

}  // namespace

QAVRbaLiveSimpleInfoDlg::QAVRbaLiveSimpleInfoDlg(QAVCommand* father, const char* name,
                                                 const QAVUnicodeString& text1,
                                                 const QAVUnicodeString& text2, int first,
                                                 int second, float value)
    : QAVCommand(father, name), _first(first), _second(second), _value(value) {
  _box = new QAVDialog(name);
  _box->SetTitle(QAVMsgCatalog::BuildMessage(QAVString("QAVRbaLiveHUDDlg"), QAVString("Infos")));
  auto* layout = new QAVDlgWidget(_box, "MainLayout", QAVDlgKind::Layout);
  auto* text = new QAVDlgWidget(layout, "infoText", QAVDlgKind::Label);
  text->SetIcon("QAVRdgLivePause.png");
  QAVUnicodeString shown = text1;
  if (!text2.IsEmpty()) shown += QAVUnicodeString("\n") + text2;
  text->SetTitle(shown);
  _restart = new RestartButton(this);
  _active = true;
}

QAVRbaLiveSimpleInfoDlg::~QAVRbaLiveSimpleInfoDlg() = default;

void QAVRbaLiveSimpleInfoDlg::EndChildren() {
  if (_restart) {
    _restart->RequestDelayedDestruction();
    _restart = nullptr;
  }
  if (_box) {
    _box->SetVisibility(false);
    _box->RequestDelayedDestruction();
    _box = nullptr;
  }
  _active = false;
}

void QAVRbaLiveSimpleInfoDlg::RequestDelayedDestruction() {
  EndChildren();
  QAVCommand::RequestDelayedDestruction();
}

void QAVRbaLiveSimpleInfoDlg::RestartCB(QAVCommand* command, QAVNotification* /*notification*/,
                                        void* /*data*/) {
  auto* box = dynamic_cast<QAVRbaLiveSimpleInfoDlg*>(command);
  if (!box || !box->_active) return;
  box->EndChildren();
  if (QAVCommandHeader* pause = QAVCommandHeader::GetHeaderFromList("PauseRender"))
    pause->StartCommand();
}
