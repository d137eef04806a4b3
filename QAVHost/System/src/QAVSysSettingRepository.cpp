#include "QAVSysSettingRepository.h"

#include "QAVSettingRepository.h"

QAV_IMPLEMENT_CLASS(QAVSysSettingRepository, QAVBaseUnknown, "System");

QAVSysSettingRepository* QAVSysSettingRepository::GetSettingRepository(const QAVString& name) {
  return QAVSettingRepository::GetRepository(name);
}
