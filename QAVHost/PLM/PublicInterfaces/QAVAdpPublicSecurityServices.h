// The user's security context in the PLM.
#ifndef QAVAdpPublicSecurityServices_h
#define QAVAdpPublicSecurityServices_h

#include "QAVHostExport.h"
#include "QAVString.h"
#include "QAVTypes.h"

class QAVHOST_API QAVAdpPublicSecurityServices {
 public:
  // The parameters of the user's current security context: `first` the role,
  // `second` the organisation, `third` the collaborative space, `fourth` the
  // access level ("Designer", "Company", "Common Space", "Author" until the
  // driver sets others). The substitute has one context, the current one, so
  // `contextName` does not select among several. E_FAIL with the four emptied
  // when security is unavailable (a driver switch).
  static HRESULT GetSecurityParameters(const QAVString& contextName, QAVString& first,
                                       QAVString& second, QAVString& third, QAVString& fourth);

 private:
  friend class QAVHostDriver;
  static void SetParameters(const QAVString& first, const QAVString& second, const QAVString& third,
                            const QAVString& fourth);
  static void SetUnavailable(bool unavailable);
  static void ResetToDefaults();
};

#endif
