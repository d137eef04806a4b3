#include "QAVRbaLiveUIServices.h"

#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

namespace {

namespace Schema = QAVRbaRenderingSettings;

// Declares a key by reading it into a variable preset to its default: the host
// keeps the preset value for a key it does not hold yet and leaves a stored
// value alone. The value read is not kept.
void Declare(QAVSettingRepository& repository, const Schema::Setting& setting) {
  const char* key = setting.key;
  switch (setting.type) {
    case Schema::Type::Int: {
      int variable = setting.intValue;
      repository.ReadSetting(key, &variable, 1);
      break;
    }
    case Schema::Type::Float: {
      float variable = setting.floatValue;
      repository.ReadSetting(key, &variable, 1);
      break;
    }
    case Schema::Type::String: {
      QAVString variable = setting.text;
      repository.ReadSetting(key, &variable, 1);
      break;
    }
    case Schema::Type::Text: {
      QAVUnicodeString variable(setting.text);
      repository.ReadSetting(key, &variable, 1);
      break;
    }
    case Schema::Type::TextList: {
      QAVUnicodeString variable[1] = {QAVUnicodeString(setting.text)};
      repository.ReadSetting(key, variable, 1);
      break;
    }
  }
}

}  // namespace

HRESULT QAVRbaLiveUIServices::InitSettings() {
  bool found = false;
  for (const Schema::Repository& schema : Schema::kRepositories) {
    QAVSettingRepository* repository =
        QAVSettingRepository::GetRepository(schema.name, 0, 1, nullptr);
    if (!repository) continue;
    found = true;
    for (const Schema::Setting& setting : schema.settings)
      Declare(*repository, setting);
  }
  return found ? S_OK : E_FAIL;
}
