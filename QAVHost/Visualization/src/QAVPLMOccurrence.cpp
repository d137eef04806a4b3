#include "QAVPLMOccurrence.h"

#include "QAVExtension.h"
#include "QAVI3DGeoVisu.h"

QAV_IMPLEMENT_CLASS(QAVPLMOccurrence, QAVIPLMNavOccurrence, "Visualization");
QAV_IMPLEMENT_CLASS(QAVPLMRepOccurrence, QAVIPLMNavRepOccurrence, "Visualization");

// The visualisation of an occurrence and of a representation occurrence: the
// representation of the occurrence that it extends.
class QAVEOccurrenceVisu : public QAVI3DGeoVisu {
  QAV_DECLARE_CLASS
 public:
  QAV3DRep* GiveRep() const override {
    const auto* occurrence = dynamic_cast<const QAVPLMOccurrence*>(GetOuter());
    return occurrence ? occurrence->GetRep() : nullptr;
  }
};

class QAVERepOccurrenceVisu : public QAVI3DGeoVisu {
  QAV_DECLARE_CLASS
 public:
  QAV3DRep* GiveRep() const override {
    const auto* occurrence = dynamic_cast<const QAVPLMRepOccurrence*>(GetOuter());
    return occurrence ? occurrence->GetRep() : nullptr;
  }
};

QAV_IMPLEMENT_CLASS(QAVEOccurrenceVisu, QAVI3DGeoVisu, "Visualization");
QAV_IMPLEMENT_CLASS(QAVERepOccurrenceVisu, QAVI3DGeoVisu, "Visualization");
QAV_REGISTER_EXTENSION(QAVEOccurrenceVisu, "QAVPLMOccurrence", QAVI3DGeoVisu);
QAV_REGISTER_EXTENSION(QAVERepOccurrenceVisu, "QAVPLMRepOccurrence", QAVI3DGeoVisu);

QAVPLMOccurrence::QAVPLMOccurrence(QAVIPLMNavInstance* instance, QAV3DRep* rep)
    : _instance(instance), _rep(rep) {}
QAVPLMOccurrence::~QAVPLMOccurrence() = default;

QAVIPLMNavOccurrence* QAVPLMOccurrence::GetChild(int index) const {
  if (index < 0 || index >= GetChildCount()) return nullptr;
  return _children[static_cast<std::size_t>(index)].get();
}

QAVIPLMNavRepOccurrence* QAVPLMOccurrence::GetRepOccurrence(int index) const {
  if (index < 0 || index >= GetRepOccurrenceCount()) return nullptr;
  return _repOccurrences[static_cast<std::size_t>(index)].get();
}

void QAVPLMOccurrence::AddChild(QAVIPLMNavOccurrence* child) {
  if (child) _children.emplace_back(child);
}

void QAVPLMOccurrence::AddRepOccurrence(QAVIPLMNavRepOccurrence* repOccurrence) {
  if (repOccurrence) _repOccurrences.emplace_back(repOccurrence);
}

QAVPLMRepOccurrence::QAVPLMRepOccurrence(QAVIPLMNavRepInstance* instance, QAV3DRep* rep)
    : _instance(instance), _rep(rep) {}
QAVPLMRepOccurrence::~QAVPLMRepOccurrence() = default;
