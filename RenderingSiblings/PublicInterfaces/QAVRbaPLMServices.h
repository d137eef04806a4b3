// The rendering framework's services over the product being edited.
#ifndef QAVRbaPLMServices_h
#define QAVRbaPLMServices_h

#include "QAVIPrdObject.h"
#include "QAVRbaSiblingsExport.h"
#include "QAVTypes.h"

class QAVRBASIBLINGS_API QAVRbaPLMServices {
 public:
  // The product active in the user interface: S_OK with a new reference for the
  // caller, or E_FAIL and null when none is active.
  static HRESULT GetUIActiveProduct(QAVIPrdObject*& product);
  // Plays the host's editor: makes a product active (a reference is held; null
  // leaves none).
  static void SetUIActiveProduct(QAVIPrdObject* product);

  QAVRbaPLMServices() = delete;
};

#endif
