// The host's context-bar component: a row or an item of it.
#ifndef QAVAfrComponent_h
#define QAVAfrComponent_h

#include <vector>

#include "QAVICAfrComponent.h"
#include "QAVRef.h"

class QAVAfrComponent : public QAVICAfrComponent {
 public:
  QAVAfrComponent(const QAVString& type, const QAVString& name, const QAVString& style,
                  const QAVAfrPropertyBundle& properties);
  ~QAVAfrComponent() override;
  QAVAfrComponent(const QAVAfrComponent&) = delete;
  QAVAfrComponent& operator=(const QAVAfrComponent&) = delete;

  // The component types the host knows, a row among them ("AfrContextBarRow").
  static bool IsKnownType(const QAVString& type);

  const QAVString& GetComponentType() const override { return _type; }
  const QAVString& GetComponentName() const override { return _name; }
  const QAVAfrPropertyBundle& GetProperties() const override { return _properties; }
  HRESULT CreateComponent(const QAVString& type, const QAVString& name, const QAVString& style,
                          const QAVAfrPropertyBundle& properties,
                          QAVBaseUnknown*& created) override;
  int GetComponentCount() const override { return static_cast<int>(_items.size()); }
  QAVICAfrComponent* GetComponent(int index) const override;
  void SetRebuildMode(bool rebuild) override;
  std::string Describe(int depth) const override;

 private:
  QAVString _type;
  QAVString _name;
  QAVString _style;
  QAVAfrPropertyBundle _properties;
  std::vector<QAVRef<QAVAfrComponent>> _items;
};

#endif
