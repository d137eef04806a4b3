#include "QAVIAfrCtxBarManager.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <utility>

#include "QAVCtxBarSwitch.h"
#include "QAVHostJournal.h"
#include "QAVProcessState.h"

QAV_IMPLEMENT_CLASS(QAVIAfrCtxBarManager, QAVBaseUnknown, "ApplicationFrame");

namespace {

// The context whose bars show when a refresh names none.
constexpr const char* kCurrentContext = "All_CtxId";

class CtxBarManager : public QAVIAfrCtxBarManager {
 public:
  // The analyzer does not follow the frame's reference count into the list.
  // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)
  HRESULT RegisterCtxBar(const QAVString& barName, const QAVString& contextId) override {
    Journal("register", barName.str() + " " + contextId.str());
    if (barName.IsEmpty()) return E_FAIL;
    if (Find(barName, contextId) != _bars.end()) return S_FALSE;
    Bar bar{barName, contextId, QAVMakeRef<QAVAfrCtxBarFrame>(barName)};
    bar.frame->Show();
    _bars.push_back(std::move(bar));
    return S_OK;
  }
  // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
  HRESULT UnregisterCtxBar(const QAVString& barName, const QAVString& contextId) override {
    Journal("unregister", barName.str() + " " + contextId.str());
    const auto it = Find(barName, contextId);
    if (it == _bars.end()) return E_FAIL;
    _bars.erase(it);
    return S_OK;
  }
  HRESULT RefreshCtxBars(const QAVString& contextName, bool repaint) override {
    Journal("refresh", "'" + contextName.str() + "' repaint=" + (repaint ? "1" : "0"));
    const QAVString context = contextName.IsEmpty() ? QAVString(kCurrentContext) : contextName;
    // A fill may register or remove bars: walk a copy.
    std::vector<QAVRef<QAVAfrCtxBarFrame>> frames;
    for (const Bar& bar : _bars)
      if (bar.context == context) frames.push_back(bar.frame);
    for (const auto& frame : frames)
      frame->Refresh(repaint);
    return S_OK;
  }
  void SetFadeEffect(unsigned char fade) override {
    Journal("fade", std::to_string(fade));
    _fade = fade;
  }
  unsigned char GetFadeEffect() const override { return _fade; }
  std::vector<QAVAfrCtxBarFrame*> GetFrames() const override {
    std::vector<QAVAfrCtxBarFrame*> frames;
    for (const Bar& bar : _bars)
      frames.push_back(bar.frame.get());
    return frames;
  }
  QAVAfrCtxBarFrame* FindFrame(const QAVString& barName) const override {
    for (const Bar& bar : _bars)
      if (bar.name == barName) return bar.frame.get();
    return nullptr;
  }

 private:
  struct Bar {
    QAVString name;
    QAVString context;
    QAVRef<QAVAfrCtxBarFrame> frame;
  };
  std::vector<Bar>::iterator Find(const QAVString& name, const QAVString& context) {
    return std::find_if(_bars.begin(), _bars.end(),
                        [&](const Bar& bar) { return bar.name == name && bar.context == context; });
  }
  void Journal(const char* operation, std::string detail) const {
    if (qavjournal::Recording())
      qavjournal::Record({"ctx-bar", operation, std::move(detail), this, nullptr});
  }

  std::vector<Bar> _bars;
  unsigned char _fade = 0;
};

QAVRef<CtxBarManager>& Session() {
  static QAVRef<CtxBarManager>* const manager = new QAVRef<CtxBarManager>;
  return *manager;
}
std::atomic<bool> unavailable{false};

void ResetSession() { Session().Reset(); }

}  // namespace

QAV_REGISTER_RESET(QAVIAfrCtxBarManager, ResetSession);

QAVIAfrCtxBarManager* GetAfrCtxBarManager() {
  if (unavailable.load()) return nullptr;
  auto& manager = Session();
  if (!manager) manager = QAVMakeRef<CtxBarManager>();
  manager->AddRef();
  return manager.get();
}

void qavctxbar::SetUnavailable(bool value) { unavailable.store(value); }
