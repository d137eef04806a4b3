#include "QAVRbaLiveUIServices.h"

#include <span>

#include "QAVRbaRenderingSettings.h"
#include "QAVSettingRepository.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

namespace Schema = QAVRbaRenderingSettings;

HRESULT QAVRbaLiveUIServices::InitSettings() {
  bool found = false;
  const std::span<const Schema::Repository> rendering(Schema::kRepositories,
                                                      Schema::kRenderingRepositoryCount);
  for (const Schema::Repository& schema : rendering) {
    QAVSettingRepository* repository =
        QAVSettingRepository::GetRepository(schema.name, 0, 1, nullptr);
    if (!repository) continue;
    found = true;
    for (const Schema::Setting& setting : schema.settings)
      Schema::Declare(*repository, setting);
  }
  return found ? S_OK : E_FAIL;
}
