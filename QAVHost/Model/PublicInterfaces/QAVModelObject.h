// An object of the model, of a class named at run time ("QAVProduct", a part,
// "QAVStkStickerContainer", "QAVRamAmbienceContainer", ...): IsA() gives that
// name and the object is a kind of QAVISpecObject. It may carry a user-visible
// name (its QAVIAlias) and named containers of member objects.
#ifndef QAVModelObject_h
#define QAVModelObject_h

#include <string>
#include <vector>

#include "QAVISpecObject.h"
#include "QAVRef.h"
#include "QAVUnicodeString.h"

class QAVIAlias;

class QAVHOST_API QAVModelObject : public QAVISpecObject {
 public:
  // The meta-class services of QAV_DECLARE_CLASS, except that IsA and
  // GetMetaObject answer the class given at creation.
  static const char* ClassName();
  static QAVMetaClass* MetaObject();
  static const IID& ClassId();

  // An object of class "QAVModelObject".
  QAVModelObject();
  // An object of the given class (empty or null: "QAVModelObject") and name (empty:
  // no name, so no QAVIAlias).
  explicit QAVModelObject(const char* className, const QAVUnicodeString& alias = {});
  QAVModelObject(const QAVModelObject&) = delete;
  QAVModelObject& operator=(const QAVModelObject&) = delete;
  ~QAVModelObject() override;

  const char* IsA() const override;
  QAVMetaClass* GetMetaObject() const override;
  // Answers QAVIAlias when the object has a name, besides its classes.
  HRESULT QueryInterface(const IID& iid, void** object) override;

  void SetAlias(const QAVUnicodeString& alias);  // empty removes the name
  QAVUnicodeString GetAlias() const;

  // The container of this name among the object's own, created (of that class)
  // on first use when `create` is true; null otherwise. Borrowed.
  QAVModelObject* GetContainer(const char* className, bool create = false);
  // The members of a container, in the order they were added. Borrowed.
  const std::vector<QAVRef<QAVModelObject>>& GetMembers() const { return _members; }
  // Adds a member (a reference is held); null is ignored.
  void AddMember(QAVModelObject* member);

 private:
  QAVMetaClass* _class;
  QAVRef<QAVIAlias> _alias;
  std::vector<QAVRef<QAVModelObject>> _containers;
  std::vector<QAVRef<QAVModelObject>> _members;
};

#endif
