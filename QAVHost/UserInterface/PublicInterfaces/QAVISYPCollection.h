// A collection property of a declarative widget: an ordered list of objects
// (the tiles of a panel), each held by one reference.
#ifndef QAVISYPCollection_h
#define QAVISYPCollection_h

#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVRef.h"

class QAVHOST_API QAVISYPCollection : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVISYPCollection() = default;
  ~QAVISYPCollection() override;

  virtual int GetCount() const = 0;
  // Borrowed; null out of range.
  virtual QAVBaseUnknown* GetItem(int index) const = 0;
  // The position of `item`, or -1.
  virtual int IndexOf(const QAVBaseUnknown* item) const = 0;
  // Appends `item` (null ignored).
  virtual void Append(QAVBaseUnknown* item) = 0;
  virtual void Clear() = 0;
};

// The default collection.
class QAVHOST_API QAVSYPCollection : public QAVISYPCollection {
  QAV_DECLARE_CLASS
 public:
  QAVSYPCollection();
  ~QAVSYPCollection() override;

  int GetCount() const override { return static_cast<int>(_items.size()); }
  QAVBaseUnknown* GetItem(int index) const override;
  int IndexOf(const QAVBaseUnknown* item) const override;
  void Append(QAVBaseUnknown* item) override;
  void Clear() override { _items.clear(); }

 private:
  std::vector<QAVBaseUnknown_var> _items;
};

#endif
