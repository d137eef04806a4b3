// The occurrences of a product structure read from a scene. Each is shown by
// the bag representation of its scene node, which it gives through
// QAVI3DGeoVisu (an extension of both classes).
#ifndef QAVPLMOccurrence_h
#define QAVPLMOccurrence_h

#include <vector>

#include "QAV3DRep.h"
#include "QAVIPLMNavInstance.h"
#include "QAVIPLMNavOccurrence.h"
#include "QAVIPLMNavRepInstance.h"
#include "QAVIPLMNavRepOccurrence.h"
#include "QAVRef.h"

class QAVHOST_API QAVPLMOccurrence : public QAVIPLMNavOccurrence {
  QAV_DECLARE_CLASS
 public:
  // An occurrence of `instance` (null: a root occurrence) shown by `rep`.
  explicit QAVPLMOccurrence(QAVIPLMNavInstance* instance = nullptr, QAV3DRep* rep = nullptr);
  ~QAVPLMOccurrence() override;

  QAVIPLMNavInstance* GetInstance() const override { return _instance.get(); }
  int GetChildCount() const override { return static_cast<int>(_children.size()); }
  QAVIPLMNavOccurrence* GetChild(int index) const override;
  int GetRepOccurrenceCount() const override { return static_cast<int>(_repOccurrences.size()); }
  QAVIPLMNavRepOccurrence* GetRepOccurrence(int index) const override;
  QAV3DRep* GetRep() const { return _rep.get(); }

  // Building (a reference is held; null is ignored).
  void AddChild(QAVIPLMNavOccurrence* child);
  void AddRepOccurrence(QAVIPLMNavRepOccurrence* repOccurrence);

 private:
  QAVRef<QAVIPLMNavInstance> _instance;
  QAVRef<QAV3DRep> _rep;
  std::vector<QAVRef<QAVIPLMNavOccurrence>> _children;
  std::vector<QAVRef<QAVIPLMNavRepOccurrence>> _repOccurrences;
};

class QAVHOST_API QAVPLMRepOccurrence : public QAVIPLMNavRepOccurrence {
  QAV_DECLARE_CLASS
 public:
  explicit QAVPLMRepOccurrence(QAVIPLMNavRepInstance* instance = nullptr, QAV3DRep* rep = nullptr);
  ~QAVPLMRepOccurrence() override;
  QAVIPLMNavRepInstance* GetRepInstance() const override { return _instance.get(); }
  QAV3DRep* GetRep() const { return _rep.get(); }

 private:
  QAVRef<QAVIPLMNavRepInstance> _instance;
  QAVRef<QAV3DRep> _rep;
};

#endif
