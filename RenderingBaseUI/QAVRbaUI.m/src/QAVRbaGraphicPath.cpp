#include "QAVRbaGraphicPath.h"

#include "QAVFileServices.h"
#include "QAVRbaEnvironment.h"
#include "QAVRbaImageServices.h"
#include "QAVRbaRenderingSettings.h"
#include "QAVString.h"
#include "QAVSysSettingRepository.h"

namespace qavrba {

QAVListValQAVUnicodeString SearchedGraphicDirectories() {
  QAVListValQAVUnicodeString all;
  QAVListValQAVUnicodeString searched;
  const char* graphicPath = QAVRbaEnvironment::GraphicPath();
  if (!graphicPath) return searched;
  QAVRbaImageServices::ExtractPathList(graphicPath, all);
  for (int position = 1; position < all.Size(); ++position)
    searched.Append(all[position]);
  return searched;
}

bool HasGraphicPath() { return QAVRbaEnvironment::GraphicPath() != nullptr; }

bool Exists(const QAVUnicodeString& path) { return _QAVFileAccess(path, 0, 0) == 0; }

QAVUnicodeString Join(const QAVUnicodeString& directory, const QAVUnicodeString& name) {
  return directory + kPathSeparator + name;
}

QAVUnicodeString LiveSystemSetting(const QAVRbaRenderingSettings::Key<QAVUnicodeString>& key) {
  QAVUnicodeString value;
  if (QAVSysSettingRepository* settings =
          QAVSysSettingRepository::GetSettingRepository(key.repository))
    QAVRbaRenderingSettings::ReadAttr(*settings, key, value);
  return value;
}

}  // namespace qavrba
