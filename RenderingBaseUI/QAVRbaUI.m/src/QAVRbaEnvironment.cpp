#include "QAVRbaEnvironment.h"

#include <array>
#include <cstring>
#include <optional>
#include <string>

#include "QAVEnvironment.h"
#include "QAVProcessState.h"

namespace {

constexpr std::array<const char*, 30> kVariables = {
    "QAVGraphicPath",
    "QAVStartupPath",
    "QAVTemp",
    "AMBCR_Force_NewHqHDRIs",
    "LRE_TRACE_FILES",
    "LRE_TRACE_SEVERITY",
    "QAVCommandPath",
    "QAVInstallPath",
    "QAVRdgAppName",
    "QAVRdgApplyIrradianceLUT",
    "QAVRdgBatchUseCustomGamma",
    "QAVRdgDebug",
    "QAVRdgDenoiser",
    "QAVRdgDumpAnimationFile",
    "QAVRdgEnableBatchColorSpace",
    "QAVRdgExportScene",
    "QAVRdgIntermediateImages",
    "QAVRdgNoArgumentOverride",
    "QAVRdgNoMemoryCheckSkip",
    "QAVRdgNoPostEffectsHDR",
    "QAVRdgNormalizeDepthHDR",
    "QAVRdgTranslationStrategy",
    "TST_IN",
    "TST_OUT",
    "TST_TMP",
    "TST_LOG_NAME",
    "TSTVarnelUser",
    "TSTVarnelPasswd",
    "TSTVarnelServer",
    "TSTVarnelContext",
};

// Copies of the values, so that a later change of the process environment
// cannot move them.
struct Values {
  std::array<std::optional<std::string>, kVariables.size()> value;

  void Read() {
    for (std::size_t i = 0; i < kVariables.size(); ++i) {
      const char* text = QAVGetEnv(kVariables[i]);
      value[i] = text ? std::optional<std::string>(text) : std::nullopt;
    }
  }
};

Values& TheValues() {
  static Values* const values = [] {
    auto* v = new Values;
    v->Read();
    return v;
  }();
  return *values;
}

const char* ValueAt(std::size_t index) {
  const auto& v = TheValues().value[index];
  return v ? v->c_str() : nullptr;
}

// Read when the library is loaded.
[[maybe_unused]] const bool kReadAtLoad = (TheValues(), true);

void ReReadForTests() { TheValues().Read(); }
QAV_REGISTER_RESET(QAVRbaEnvironment, ReReadForTests);

}  // namespace

const char* QAVRbaEnvironment::Get(const char* name) {
  if (!name) return nullptr;
  for (std::size_t i = 0; i < kVariables.size(); ++i)
    if (std::strcmp(kVariables[i], name) == 0) return ValueAt(i);
  return nullptr;
}

const char* QAVRbaEnvironment::GraphicPath() { return ValueAt(0); }
const char* QAVRbaEnvironment::StartupPath() { return ValueAt(1); }
const char* QAVRbaEnvironment::TempPath() { return ValueAt(2); }
const char* QAVRbaEnvironment::ForceNewHqHDRIs() { return ValueAt(3); }
const char* QAVRbaEnvironment::TraceFiles() { return ValueAt(4); }
const char* QAVRbaEnvironment::TraceSeverity() { return ValueAt(5); }

int QAVRbaEnvironment::GetVariableCount() { return static_cast<int>(kVariables.size()); }
const char* QAVRbaEnvironment::GetVariableName(int index) {
  return index >= 0 && index < GetVariableCount() ? kVariables[static_cast<std::size_t>(index)]
                                                  : nullptr;
}
