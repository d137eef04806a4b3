#include "QAVSessionRecorder.h"

#include "QAVProcessState.h"

namespace {
QAVSessionRecorder* recorder = nullptr;

void ForgetRecorder() {
  delete recorder;
  recorder = nullptr;
}
QAV_REGISTER_RESET(QAVSessionRecorder, ForgetRecorder);
}  // namespace

QAVSessionRecorder* QAVSessionRecorder::GetRecorder() { return recorder; }

QAVSessionRecorder* QAVSessionRecorder::Create() {
  if (!recorder) recorder = new QAVSessionRecorder;
  return recorder;
}

HRESULT QAVSessionRecorder::RecordValue(const char* key, int value) {
  if (_mode != Mode::Capturing || !key || !*key) return E_FAIL;
  _values[key] = value;
  return S_OK;
}

HRESULT QAVSessionRecorder::GetRecordedValue(const char* key, int& value) const {
  if (_mode != Mode::Replaying || !key) return E_FAIL;
  const auto found = _values.find(key);
  if (found == _values.end()) return E_FAIL;
  value = found->second;
  return S_OK;
}
