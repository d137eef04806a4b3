#include "QAVRbaMaterialCatalogImporterPanel.h"

#include "QAVCallbackManager.h"
#include "QAVISYPIntrospectable.h"
#include "QAVRbaMaterialCatalogImporterItem.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"

QAV_IMPLEMENT_CLASS(QAVRbaMaterialCatalogImporterPanelSelectItemNotification, QAVNotification,
                    "RenderingBaseUI");
QAV_IMPLEMENT_CLASS(QAVRbaMaterialCatalogImporterPanelCancelNotification, QAVNotification,
                    "RenderingBaseUI");
QAV_IMPLEMENT_CLASS(QAVRbaMaterialCatalogImporterPanel, QAVSYPWidget, "RenderingBaseUI");

QAVRbaMaterialCatalogImporterPanelSelectItemNotification::
    QAVRbaMaterialCatalogImporterPanelSelectItemNotification() = default;
QAVRbaMaterialCatalogImporterPanelSelectItemNotification::
    ~QAVRbaMaterialCatalogImporterPanelSelectItemNotification() = default;
QAVRbaMaterialCatalogImporterPanelCancelNotification::
    QAVRbaMaterialCatalogImporterPanelCancelNotification() = default;
QAVRbaMaterialCatalogImporterPanelCancelNotification::
    ~QAVRbaMaterialCatalogImporterPanelCancelNotification() = default;

namespace {

namespace Schema = QAVRbaRenderingSettings;

}  // namespace

QAVRbaMaterialCatalogImporterPanel::QAVRbaMaterialCatalogImporterPanel(QAVDlgWidget* father,
                                                                       const char* name)
    : QAVSYPWidget(father, name, QAVDlgKind::Frame),
      _selectItem(QAVMakeRef<QAVRbaMaterialCatalogImporterPanelSelectItemNotification>()),
      _cancel(QAVMakeRef<QAVRbaMaterialCatalogImporterPanelCancelNotification>()) {
  // Widgets are held by their father: this panel.
  _icon = new QAVDlgWidget(this, "PanelIcon", QAVDlgKind::Picture);
  _container = new QAVDlgWidget(this, "ItemContainer", QAVDlgKind::Container);
  _check = new QAVDlgWidget(this, "CheckDoNoSHowAgain", QAVDlgKind::CheckBox);
  _create = new QAVDlgWidget(this, "CreateButton", QAVDlgKind::Button);
  auto* cancel = new QAVDlgWidget(this, "CancelButton", QAVDlgKind::Button);
  for (QAVDlgWidget* button : {_create, cancel})
    AddAnalyseNotificationCB(button, QAVDlgWidget::BUTTON_PRESS(),
                             &QAVRbaMaterialCatalogImporterPanel::OnButton, nullptr);
  AddAnalyseNotificationCB(_check, QAVDlgWidget::CHECK_CHANGE(),
                           &QAVRbaMaterialCatalogImporterPanel::OnCheck, nullptr);

  int showPopUp = 0;
  if (QAVSettingRepository* settings = Schema::Open(Schema::kLiveImporterPopUp))
    if (FAILED(Schema::Read(*settings, Schema::kLiveImporterPopUp, showPopUp))) showPopUp = 0;
  SetDoNotShowAgainCheck(showPopUp ? 0 : 1);
  _check->SetCheckState(GetDoNotShowAgainCheck());
}

QAVRbaMaterialCatalogImporterPanel::~QAVRbaMaterialCatalogImporterPanel() {
  QAVISYPCollection* items = nullptr;
  if (QAVISYPIntrospectable* introspection = GetIntrospectionWithoutQuery())
    if (SUCCEEDED(introspection->GetCollectionProperty("Items", items))) items->Clear();
}

QAVRbaMaterialCatalogImporterItem* QAVRbaMaterialCatalogImporterPanel::ItemAt(int index) const {
  QAVISYPCollection* items = GetItems();
  return items ? dynamic_cast<QAVRbaMaterialCatalogImporterItem*>(items->GetItem(index)) : nullptr;
}

void QAVRbaMaterialCatalogImporterPanel::AddItem(QAVRbaMaterialCatalogImporterItem* item) {
  QAVISYPCollection* items = GetItems();
  if (!item || !_container || !items) return;
  AddAnalyseNotificationCB(item, QAVDlgWidget::CLICK(),
                           &QAVRbaMaterialCatalogImporterPanel::OnClick, nullptr);
  AddAnalyseNotificationCB(item, QAVDlgWidget::DOUBLE_CLICK(),
                           &QAVRbaMaterialCatalogImporterPanel::OnDoubleClick, nullptr);
  AddAnalyseNotificationCB(item, QAVDlgWidget::POINTER_ENTER(),
                           &QAVRbaMaterialCatalogImporterPanel::OnPointerEnter, nullptr);
  AddAnalyseNotificationCB(item, QAVDlgWidget::POINTER_LEAVE(),
                           &QAVRbaMaterialCatalogImporterPanel::OnPointerLeave, nullptr);
  item->SetLayoutConstraint("Stack");
  items->Append(item);
}

void QAVRbaMaterialCatalogImporterPanel::SetPanelIcon(const char* imageName) {
  if (_icon) _icon->SetIcon(imageName);
  if (_create) _create->SetSensitivity(false);
}

void QAVRbaMaterialCatalogImporterPanel::Select(QAVCommand* sender) {
  if (_selectedIndex != -1) {
    if (QAVRbaMaterialCatalogImporterItem* selected = ItemAt(_selectedIndex))
      selected->SetBSelect(0);
    _selectedIndex = -1;
  }
  auto* item = dynamic_cast<QAVRbaMaterialCatalogImporterItem*>(sender);
  if (item && item->GetUnavailable() != 1) {
    item->SetBHighlight(0);
    item->SetBSelect(1);
    _selectedIndex = GetItems()->IndexOf(item);
  }
  if (_create) _create->SetSensitivity(_selectedIndex != -1);
}

void QAVRbaMaterialCatalogImporterPanel::SendSelectItem() {
  GetCallbackManager()->DispatchCallbacks(SELECT_ITEM(), _selectItem.get(), this);
}

void QAVRbaMaterialCatalogImporterPanel::OnClick(QAVCommand* sender, QAVNotification*, void*) {
  Select(sender);
}

void QAVRbaMaterialCatalogImporterPanel::OnDoubleClick(QAVCommand* sender, QAVNotification*,
                                                       void*) {
  Select(sender);
  SendSelectItem();
}

void QAVRbaMaterialCatalogImporterPanel::OnPointerEnter(QAVCommand* sender, QAVNotification*,
                                                        void*) {
  auto* item = dynamic_cast<QAVRbaMaterialCatalogImporterItem*>(sender);
  if (item && GetItems()->IndexOf(item) != _selectedIndex) item->SetBHighlight(1);
}

void QAVRbaMaterialCatalogImporterPanel::OnPointerLeave(QAVCommand* sender, QAVNotification*,
                                                        void*) {
  if (auto* item = dynamic_cast<QAVRbaMaterialCatalogImporterItem*>(sender)) item->SetBHighlight(0);
}

void QAVRbaMaterialCatalogImporterPanel::OnButton(QAVCommand* sender, QAVNotification*, void*) {
  if (!sender) return;
  if (sender->GetName() == "CreateButton")
    SendSelectItem();
  else if (sender->GetName() == "CancelButton")
    GetCallbackManager()->DispatchCallbacks(CANCEL(), _cancel.get(), this);
}

void QAVRbaMaterialCatalogImporterPanel::OnCheck(QAVCommand* sender, QAVNotification*, void*) {
  auto* box = dynamic_cast<QAVDlgWidget*>(sender);
  if (!box) return;
  const int state = box->GetCheckState();
  if (state == GetDoNotShowAgainCheck()) return;
  // Without the repository the box keeps its state and nothing is saved.
  QAVSettingRepository* settings = Schema::Open(Schema::kLiveImporterPopUp);
  if (!settings) {
    box->SetCheckState(GetDoNotShowAgainCheck());
    return;
  }
  const int showPopUp = state ? 0 : 1;
  Schema::Write(*settings, Schema::kLiveImporterPopUp, showPopUp);
  settings->SaveRepository();
  SetDoNotShowAgainCheck(state);
}
