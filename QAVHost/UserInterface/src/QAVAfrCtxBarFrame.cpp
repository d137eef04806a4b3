#include "QAVAfrCtxBarFrame.h"

#include "QAVAdapterAfrCtxBar.h"
#include "QAVAfrComponent.h"
#include "QAVCommandHeader.h"
#include "QAVHostJournal.h"
#include "QAVMetaClass.h"

QAV_IMPLEMENT_CLASS(QAVAfrCtxBarFrame, QAVBaseUnknown, "ApplicationFrame");

namespace {

// An object of a late type: a class known by its name alone, which modules
// extend (a context bar is such an extension).
class LateTypeObject : public QAVBaseUnknown {
 public:
  explicit LateTypeObject(const QAVString& lateType)
      : _class(QAVMetaClass::Create(lateType.c_str(), QAVBaseUnknown::MetaObject(),
                                    "ApplicationFrame")) {}
  const char* IsA() const override { return _class->GetName(); }
  QAVMetaClass* GetMetaObject() const override { return _class; }

 private:
  QAVMetaClass* _class;
};

void Journal(const char* operation, const std::string& detail, const void* source) {
  if (qavjournal::Recording()) qavjournal::Record({"ctx-bar", operation, detail, source, nullptr});
}

// The button whose "Command" is `header`, depth first.
QAVICAfrComponent* FindButton(QAVICAfrComponent* component, const QAVString& header) {
  QAVString command;
  if (component->GetComponentType() == "QAVCmdStarter" &&
      component->GetProperties().GetString("Command", command) && command == header)
    return component;
  for (int i = 0; i < component->GetComponentCount(); ++i)
    if (QAVICAfrComponent* found = FindButton(component->GetComponent(i), header)) return found;
  return nullptr;
}

}  // namespace

QAVAfrCtxBarFrame::QAVAfrCtxBarFrame(const QAVString& lateType,
                                     const std::vector<QAVString>& rowNames)
    : _lateType(lateType) {
  for (const QAVString& name : rowNames)
    _rows.push_back(QAVMakeRef<QAVAfrComponent>(QAVString("AfrContextBarRow"), name, QAVString(),
                                                QAVAfrPropertyBundle()));
}

QAVAfrCtxBarFrame::~QAVAfrCtxBarFrame() {
  if (auto* adapter = dynamic_cast<QAVAdapterAfrCtxBar*>(_bar.get())) adapter->AttachFrame(nullptr);
}

HRESULT QAVAfrCtxBarFrame::Show() {
  if (!_bar) {
    if (_lateType.IsEmpty()) return E_FAIL;
    auto component = QAVRef<QAVBaseUnknown>::Adopt(new LateTypeObject(_lateType));
    QAVRef<QAVIAfrCtxBar> bar = QAVQuery<QAVIAfrCtxBar>(component.get());
    if (!bar) return E_FAIL;
    if (auto* adapter = dynamic_cast<QAVAdapterAfrCtxBar*>(bar.get())) adapter->AttachFrame(this);
    _component = component;
    _bar = bar;
  }
  _shown = true;
  ++_fills;
  Journal("fill", _lateType.str(), this);
  _bar->FillCtxBar(QAVString());
  return S_OK;
}

HRESULT QAVAfrCtxBarFrame::Refresh(bool repaint) {
  if (!_shown) return S_FALSE;
  return repaint ? Show() : S_OK;
}

QAVICAfrComponent* QAVAfrCtxBarFrame::GetRow(int index) const {
  if (index < 0 || index >= GetRowCount()) return nullptr;
  return _rows[static_cast<std::size_t>(index)].get();
}

QAVICAfrComponent* QAVAfrCtxBarFrame::FindRow(const QAVString& name) const {
  for (const auto& row : _rows)
    if (row->GetComponentName() == name) return row.get();
  return nullptr;
}

std::string QAVAfrCtxBarFrame::Describe() const {
  std::string text;
  for (const auto& row : _rows)
    text += row->Describe(0);
  return text;
}

HRESULT QAVAfrCtxBarFrame::Press(const QAVString& header, QAVCommand*& started,
                                 std::string& error) {
  started = nullptr;
  QAVICAfrComponent* button = nullptr;
  for (const auto& row : _rows)
    if (!button) button = FindButton(row.get(), header);
  if (!button) {
    error = "the bar " + _lateType.str() + " has no button \"" + header.str() + "\"";
    return E_FAIL;
  }
  QAVCommandHeader* commandHeader = QAVCommandHeader::GetHeaderFromList(header.c_str());
  if (!commandHeader) {
    error = "no command header \"" + header.str() + "\"";
    return E_FAIL;
  }
  Journal("press", header.str(), this);
  started = commandHeader->StartCommand();
  return S_OK;
}
