#include "QAVFrmLayout.h"

#include <algorithm>

#include "QAVCallbackManager.h"
#include "QAVFrmWindow.h"
#include "QAVProcessState.h"

QAV_IMPLEMENT_CLASS(QAVFrmLayout, QAVEventSubscriber, "System");

namespace {
QAVRef<QAVFrmLayout>& CurrentLayout() {
  static auto* const current = new QAVRef<QAVFrmLayout>;
  return *current;
}

void ResetCurrentLayout() { QAVFrmLayout::SetCurrentLayout(nullptr); }
}  // namespace

QAV_REGISTER_RESET(QAVFrmLayout, &ResetCurrentLayout);

QAVFrmLayout::QAVFrmLayout() : _callbacks(QAVMakeRef<QAVCallbackManager>()) {}

QAVFrmLayout::~QAVFrmLayout() {
  _currentWindow = nullptr;
  // Windows go before the callback manager, in reverse order of addition.
  while (!_windows.empty())
    _windows.pop_back();
}

QAVFrmLayout* QAVFrmLayout::GetCurrentLayout() { return CurrentLayout().get(); }

void QAVFrmLayout::SetCurrentLayout(QAVFrmLayout* layout) {
  // The old layout's destruction may run code that asks for the current layout:
  // it must already see the new one.
  QAVRef<QAVFrmLayout> old = std::move(CurrentLayout());
  CurrentLayout() = QAVRef<QAVFrmLayout>(layout);
}

void QAVFrmLayout::SetCallbackManager(QAVCallbackManager* manager) {
  _callbacks = QAVRef<QAVCallbackManager>(manager);
}

HRESULT QAVFrmLayout::AddWindow(QAVFrmWindow* window) {
  if (!window) return E_INVALIDARG;
  if (std::any_of(_windows.begin(), _windows.end(),
                  [window](const QAVRef<QAVFrmWindow>& w) { return w.get() == window; }))
    return S_FALSE;
  _windows.emplace_back(window);
  return S_OK;
}

HRESULT QAVFrmLayout::RemoveWindow(QAVFrmWindow* window) {
  const auto it =
      std::find_if(_windows.begin(), _windows.end(),
                   [window](const QAVRef<QAVFrmWindow>& w) { return w.get() == window; });
  if (!window || it == _windows.end()) return E_FAIL;
  if (_currentWindow == window) _currentWindow = nullptr;
  QAVRef<QAVFrmWindow> removed = std::move(*it);
  _windows.erase(it);
  return S_OK;
}

QAVFrmWindow* QAVFrmLayout::GetWindow(int index) const {
  if (index < 0 || index >= GetWindowCount()) return nullptr;
  return _windows[static_cast<std::size_t>(index)].get();
}

void QAVFrmLayout::SetCurrentWindow(QAVFrmWindow* window) {
  if (window) AddWindow(window);
  _currentWindow = window;
}
