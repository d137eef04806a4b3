#include "QAVViewerEvent.h"

#include "QAV3DRep.h"

QAV_IMPLEMENT_CLASS(QAVViewerEvent, QAVNotification, "Visualization");
QAV_IMPLEMENT_CLASS(QAVVueNotification, QAVNotification, "Visualization");

QAVViewerEvent::QAVViewerEvent(QAVViewer* viewer, double x, double y, int button,
                               QAVPickPath* under)
    : _viewer(viewer),
      _x(x),
      _y(y),
      _button(button),
      _under(under),
      _path(QAVMakeRef<QAVPathElement>()) {
  if (!under) return;
  // The pick path runs from the leaf up: each represented object is a father
  // of the ones found before it.
  for (int i = 0; i < under->GetRepCount(); ++i)
    if (QAVModelObject* object = under->GetRep(i)->GetModelObject())
      _path->AddFatherElement(object);
}

QAVViewerEvent::~QAVViewerEvent() = default;
QAVVueNotification::~QAVVueNotification() = default;
