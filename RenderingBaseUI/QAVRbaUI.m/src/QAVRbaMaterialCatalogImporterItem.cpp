#include "QAVRbaMaterialCatalogImporterItem.h"

QAV_IMPLEMENT_CLASS(QAVRbaMaterialCatalogImporterItem, QAVSYPWidget, "RenderingBaseUI");

QAVRbaMaterialCatalogImporterItem::QAVRbaMaterialCatalogImporterItem(QAVDlgWidget* father,
                                                                     const char* name)
    : QAVSYPWidget(father, name, QAVDlgKind::Button) {}

QAVRbaMaterialCatalogImporterItem::~QAVRbaMaterialCatalogImporterItem() = default;
