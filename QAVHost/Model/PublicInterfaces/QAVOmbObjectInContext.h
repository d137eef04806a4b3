// An object in context: a selected model object together with its path in the
// product structure (the components from the root product down to the leaf).
#ifndef QAVOmbObjectInContext_h
#define QAVOmbObjectInContext_h

#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVIPLMComponent.h"
#include "QAVRef.h"
#include "QAVTypes.h"

class QAVHOST_API QAVOmbObjectInContext : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVOmbObjectInContext();
  ~QAVOmbObjectInContext() override;
  QAVOmbObjectInContext(const QAVOmbObjectInContext&) = delete;
  QAVOmbObjectInContext& operator=(const QAVOmbObjectInContext&) = delete;

  // The leaf object: the model object selected (borrowed), or null.
  QAVBaseUnknown* GetLeafObject() const { return _leafObject.get(); }
  // The leaf instance: the instance (of a part or of a representation) that
  // places the leaf object (borrowed), or null.
  QAVBaseUnknown* GetLeafInstance() const { return _leafInstance.get(); }
  // The components along the path, root first and leaf last, appended to
  // `components`, each with a reference that the caller releases.
  HRESULT ListComponents(std::vector<QAVIPLMComponent*>& components) const;
  int GetComponentCount() const { return static_cast<int>(_components.size()); }

  // Building (a reference is held on each; null is ignored by AddComponent).
  void SetLeafObject(QAVBaseUnknown* object) { _leafObject = QAVRef<QAVBaseUnknown>(object); }
  void SetLeafInstance(QAVBaseUnknown* instance) {
    _leafInstance = QAVRef<QAVBaseUnknown>(instance);
  }
  void AddComponent(QAVIPLMComponent* component);  // below the current leaf

 private:
  QAVRef<QAVBaseUnknown> _leafObject;
  QAVRef<QAVBaseUnknown> _leafInstance;
  std::vector<QAVRef<QAVIPLMComponent>> _components;
};

#endif
