// The instances of a product structure read from a scene: an instance of a
// product or part (QAVPLMInstance) and an instance of a representation
// (QAVPLMRepInstance), each standing for its reference model object.
#ifndef QAVPLMInstance_h
#define QAVPLMInstance_h

#include "QAVIPLMNavInstance.h"
#include "QAVIPLMNavRepInstance.h"
#include "QAVModelObject.h"

class QAVHOST_API QAVPLMInstance : public QAVIPLMNavInstance {
  QAV_DECLARE_CLASS
 public:
  explicit QAVPLMInstance(QAVModelObject* reference = nullptr);
  ~QAVPLMInstance() override;
  QAVModelObject* GetReference() const override { return _reference.get(); }
  HRESULT ListOccurrences(QAVIPLMNavOccurrence* root,
                          std::vector<QAVRef<QAVIPLMNavOccurrence>>& occurrences) override;

 private:
  QAVRef<QAVModelObject> _reference;
};

class QAVHOST_API QAVPLMRepInstance : public QAVIPLMNavRepInstance {
  QAV_DECLARE_CLASS
 public:
  explicit QAVPLMRepInstance(QAVModelObject* reference = nullptr);
  ~QAVPLMRepInstance() override;
  QAVModelObject* GetReference() const override { return _reference.get(); }
  HRESULT ListRepOccurrences(QAVIPLMNavOccurrence* root,
                             std::vector<QAVRef<QAVIPLMNavRepOccurrence>>& occurrences) override;

 private:
  QAVRef<QAVModelObject> _reference;
};

#endif
