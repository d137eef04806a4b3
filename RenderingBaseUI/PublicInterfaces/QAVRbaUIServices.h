// Services of the material and rendering user interfaces: whether the live
// renderer supports a material's shader type, the visualisation path of a
// model object for highlighting and picking, and the user's security
// parameters in the PLM.
#ifndef QAVRbaUIServices_h
#define QAVRbaUIServices_h

#include <vector>

#include "QAVBaseUnknown.h"
#include "QAVPathElement.h"
#include "QAVRbaUIExport.h"
#include "QAVString.h"
#include "QAVTypes.h"

class QAVRBAUI_API QAVRbaUIServices {
 public:
  // True when `shaderType` is, exactly (case included), one of the supported
  // shader types. The list is made on the first call of this or of
  // GetSupportedShaderTypes, once, whatever the threads calling: 48 names, or
  // 39 when "QAVMatPBRSubtypesEnable" is set then, which takes the nine
  // subtypes of the 22x physically based shader out. The variable is read
  // once, so its effect is fixed by that first call.
  static bool CheckShaderType(QAVString& shaderType);
  // The supported shader types, in order (the list CheckShaderType looks in).
  static std::vector<QAVString> GetSupportedShaderTypes();

  // A new path for `object` (the caller owns one reference): the current
  // editor's path without its documents, from its root down, then the
  // representation of the object: outside the workbench
  // "RenderingAmbienceWorkbench" the single technological representation of
  // its representation reference (none when it has not exactly one), inside it
  // the representation that shows the object. S_OK; E_FAIL and `pathElement`
  // untouched for a null object or output, or without a current editor.
  static HRESULT BuildPathElement(QAVBaseUnknown* object, QAVPathElement** pathElement);

  // The first two parameters of the user's current security context (the
  // host's public security services, asked with an empty context name); the
  // host's result is returned as it is.
  static HRESULT GetSecurityParameters(QAVString& first, QAVString& second);

  QAVRbaUIServices() = delete;
};

#endif
