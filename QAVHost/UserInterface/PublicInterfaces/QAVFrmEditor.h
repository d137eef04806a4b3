// The editor of the document the user works on, with its path element: the
// path from the edited root down to what the user works in (UI-activated
// object). There is none until a document is opened (a scene opened by the
// driver makes one, its path holding a document object, of class "QAVDocument",
// and the scene's root object).
#ifndef QAVFrmEditor_h
#define QAVFrmEditor_h

#include "QAVBaseUnknown.h"
#include "QAVPathElement.h"

class QAVHOST_API QAVFrmEditor : public QAVBaseUnknown {
  QAV_DECLARE_CLASS
 public:
  QAVFrmEditor() = default;
  ~QAVFrmEditor() override;

  // The current editor (borrowed), or null.
  static QAVFrmEditor* GetCurrentEditor();
  // Makes an editor current (a reference is held); null: none.
  static void SetCurrentEditor(QAVFrmEditor* editor);

  // A copy of the editor's path: changing it changes nothing in the editor.
  QAVPathElement GetPathElement() const { return _path; }
  void SetPathElement(const QAVPathElement& path) { _path = path; }

 private:
  QAVPathElement _path;
};

#endif
