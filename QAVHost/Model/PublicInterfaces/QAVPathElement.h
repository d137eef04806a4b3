// A path in the model tree: the ordered objects from a root (index 0) down to a
// leaf. A value type: a copy is a new, independent path holding its own
// references to the same objects. It is also a host object, so a path can be
// handed around by reference like any other.
#ifndef QAVPathElement_h
#define QAVPathElement_h

#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVRef.h"

class QAVHOST_API QAVPathElement : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVPathElement();
  // A one-element path (empty for null).
  explicit QAVPathElement(QAVBaseUnknown* root);
  QAVPathElement(const QAVPathElement& other);
  QAVPathElement& operator=(const QAVPathElement& other);
  ~QAVPathElement() override;

  int GetSize() const { return static_cast<int>(_elements.size()); }
  bool IsEmpty() const { return _elements.empty(); }
  // Borrowed; null out of range.
  QAVBaseUnknown* GetElement(int index) const;
  QAVBaseUnknown* GetRoot() const { return GetElement(0); }
  QAVBaseUnknown* GetLeaf() const { return GetElement(GetSize() - 1); }

  // Append below the leaf / insert above the root; null is ignored.
  void AddChildElement(QAVBaseUnknown* element);
  void AddFatherElement(QAVBaseUnknown* element);
  void Clear();

  // The first element, from the root down, that answers the interface; the
  // result holds the reference given by the query. Null when none does.
  QAVBaseUnknown_var FindElement(const IID& iid) const;

  // Same objects in the same order.
  bool IsSamePath(const QAVPathElement& other) const;

  // A walk up the path: InitToLeafElement puts the cursor on the leaf, then each
  // NextFatherElement gives the element under the cursor (borrowed) and moves
  // it one up, null once past the root. A copy starts with no walk.
  void InitToLeafElement() { _cursor = GetSize() - 1; }
  QAVBaseUnknown* NextFatherElement();

 private:
  std::vector<QAVBaseUnknown_var> _elements;
  int _cursor = -1;
};

#endif
