#include "QAVRbaLiveUIServices.h"

#include <initializer_list>
#include <variant>

#include "QAVSettingRepository.h"
#include "QAVString.h"
#include "QAVUnicodeString.h"

namespace {

// A one-element list of texts, declared with a count of 1.
struct TextList {
  const char* element;
};

using Default =
    std::variant<int, float, const char* /* string */, QAVUnicodeString /* text */, TextList>;

struct Declaration {
  const char* key;
  Default value;
};

// Declares a key by reading it into a variable preset to its default: the host
// keeps the preset value for a key it does not hold yet and leaves a stored
// value alone. The value read is not kept.
void Declare(QAVSettingRepository& repository, const Declaration& declaration) {
  const char* key = declaration.key;
  if (const int* i = std::get_if<int>(&declaration.value)) {
    int variable = *i;
    repository.ReadSetting(key, &variable, 1);
  } else if (const float* f = std::get_if<float>(&declaration.value)) {
    float variable = *f;
    repository.ReadSetting(key, &variable, 1);
  } else if (const auto* s = std::get_if<const char*>(&declaration.value)) {
    QAVString variable = *s;
    repository.ReadSetting(key, &variable, 1);
  } else if (const auto* t = std::get_if<QAVUnicodeString>(&declaration.value)) {
    QAVUnicodeString variable = *t;
    repository.ReadSetting(key, &variable, 1);
  } else if (const auto* list = std::get_if<TextList>(&declaration.value)) {
    QAVUnicodeString variable[1] = {QAVUnicodeString(list->element)};
    repository.ReadSetting(key, variable, 1);
  }
}

void DeclareAll(QAVSettingRepository& repository, std::initializer_list<Declaration> declarations) {
  for (const Declaration& declaration : declarations)
    Declare(repository, declaration);
}

// The settings shared by the live and batch renderers, from "DomeImage" to
// "Vignetting". The batch renderer has no "FileSaveAllowed": a deliberate
// difference between the two, kept as it is.
void DeclareRendererSettings(QAVSettingRepository& repository, bool withFileSaveAllowed) {
  DeclareAll(repository, {
                             {"DomeImage", "studio_pure_white.hdr"},
                             {"FNumber", 0.0f},
                             {"ShutterTime", 0.006f},
                             {"FilmISO", 100.0f},
                             {"Autofocus", 1},
                             {"FocalDistance", 1000.0f},
                             {"FocalPointX", 0.0f},
                             {"FocalPointY", 0.0f},
                             {"FocalPointZ", 0.0f},
                             {"Width", 800.0f},
                             {"Height", 600.0f},
                             {"KeepRatio", 0},
                             {"Units", "pixels"},
                             {"DPI", 150},
                             {"Resolution", 1},
                             {"SaveType", 11},
                             {"InsertLogo", 0},
                         });
  if (withFileSaveAllowed) DeclareAll(repository, {{"FileSaveAllowed", 0}});
  DeclareAll(repository, {
                             {"SaveLimit", 0},
                             {"SaveFrameLimit", 100},
                             {"SaveTimeLimit", 60},
                             {"SaveTimeUnit", 0},
                             {"SaveErrorThreshold", 0.5f},
                             {"CrushBlacks", 0.0f},
                             {"BurnHighlights", 1.0f},
                             {"Saturation", 1.0f},
                             {"Gamma", 2.2f},
                             {"Vignetting", 0.0f},
                         });
}

QAVSettingRepository* Open(const char* name) {
  return QAVSettingRepository::GetRepository(name, 0, 1, nullptr);
}

}  // namespace

HRESULT QAVRbaLiveUIServices::InitSettings() {
  bool found = false;

  if (QAVSettingRepository* live = Open("RenderingLiveSettings")) {
    found = true;
    DeclareRendererSettings(*live, true);
    DeclareAll(*live, {
                          {"RenderEngine", 1},
                          {"RollActivation", 0},
                          {"RollValue", 0.0f},
                          // The working colour profile of colour management.
                          {"ColorProfileSelectedIndex", 0},
                      });
  }

  if (QAVSettingRepository* batch = Open("RenderingBatchSettings")) {
    found = true;
    DeclareRendererSettings(*batch, false);
    DeclareAll(*batch, {
                           {"RenderPassCount", 1},
                           {"CanvasArray", TextList{"result"}},
                           {"SaveBatchDirectory", QAVUnicodeString("")},
                           {"CacheBatchDirectory", QAVUnicodeString("")},
                           {"RenderEngine", 1},
                           {"RenderMode", "velun:cpu"},
                       });
  }

  if (QAVSettingRepository* network = Open("RenderingNetworkSettings")) {
    found = true;
    DeclareAll(*network, {
                             {"RemoteAddress", ""},
                             {"RemotePort", 10001},
                             {"VCAAddress", ""},
                             {"VCAUser", QAVUnicodeString("")},
                             {"VCAPassword", QAVUnicodeString("")},
                         });
  }

  return found ? S_OK : E_FAIL;
}
